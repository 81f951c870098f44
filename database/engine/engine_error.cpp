#include "database/engine/engine_error.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace engine {
namespace {

struct ErrorText {
  int number;
  /// "|" is the place of the detail; what stands in braces is left out where there is none.
  std::string_view text;
};

constexpr ErrorText error_texts[] = {
    {5, "Invalid procedure call or argument."},
    {6, "Overflow."},
    {7, "Out of memory."},
    {11, "Division by zero."},
    {13, "Type mismatch."},
    {14, "Out of string space."},
    {51, "Internal error of the database engine."},
    {91, "Object variable not set."},
    {93, "Invalid pattern string."},
    {94, "Invalid use of Null."},
    {3001, "Invalid argument."},
    {3010, "Table '|' already exists."},
    {3020, "Update or CancelUpdate without AddNew or Edit."},
    {3021, "No current record."},
    {3022, "The changes would create duplicate values in an index or primary key."},
    {3024, "The database file could not be found."},
    {3027, "Cannot update. Database or object is read-only."},
    {3031, "Not a valid password."},
    {3034, "You tried to commit or rollback a transaction without first beginning a transaction."},
    {3043, "Disk or network error{: |}."},
    {3044, "The folder of the database file is not a valid path: it does not exist, or is no folder."},
    {3045, "Could not use the database file; it is already in use."},
    {3051, "The database file cannot be opened: it is opened exclusively by another user, or you need permission."},
    {3058, "Index or primary key cannot contain a Null value."},
    {3059, "Operation canceled by user."},
    {3061, "Too few parameters. Expected |."},
    {3063, "Duplicate output destination '|'."},
    {3065, "Cannot execute a select query."},
    {3067, "Query input must contain at least one table or query."},
    {3074, "Cannot repeat table name '|' in FROM clause."},
    {3075, "Syntax error in query expression{ (|)}."},
    {3078, "The input table or query '|' cannot be found."},
    {3079, "The field '|' could refer to more than one table listed in the FROM clause."},
    {3085, "Undefined function '|' in expression."},
    {3093, "ORDER BY clause conflicts with DISTINCT."},
    {3095, "Cannot have an aggregate function in an expression of this kind."},
    {3096, "Cannot have an aggregate function in a WHERE clause."},
    {3097, "Cannot have an aggregate function in this ORDER BY clause."},
    {3098, "Cannot have an aggregate function in a GROUP BY clause."},
    {3099, "Cannot have an aggregate function in a JOIN operation."},
    {3103, "Circular reference caused by alias '|' in the query's SELECT list."},
    {3104, "Cannot specify fixed column heading '|' in a crosstab query more than once."},
    {3113, "Cannot update '|'; field not updatable."},
    {3121, "Cannot group on fields selected with '*'."},
    {3122, "The query does not include the expression '|' as part of an aggregate function."},
    {3125, "'|' is not a valid name."},
    {3126, "Invalid bracketing of a name{ (|)}."},
    {3127, "The INSERT INTO statement contains the following unknown field name: '|'."},
    {3128, "Specify the table containing the records you want to delete."},
    {3129,
     "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', 'UPDATE', 'CREATE', 'ALTER', 'DROP', 'TRANSFORM' "
     "or 'PARAMETERS'{ (|)}."},
    {3130, "Syntax error in DELETE statement{ (|)}."},
    {3131, "Syntax error in FROM clause{ (|)}."},
    {3132, "Syntax error in GROUP BY clause{ (|)}."},
    {3134, "Syntax error in INSERT INTO statement{ (|)}."},
    {3135, "Syntax error in JOIN operation{ (|)}."},
    {3137, "Missing semicolon (;) at end of SQL statement{ (|)}."},
    {3138, "Syntax error in ORDER BY clause{ (|)}."},
    {3139, "Syntax error in PARAMETERS clause{ (|)}."},
    {3141,
     "The SELECT statement includes a reserved word or an argument name that is misspelled or missing, or the "
     "punctuation is incorrect{ (|)}."},
    {3142, "Characters found after end of SQL statement{ (|)}."},
    {3143, "Syntax error in TRANSFORM statement{ (|)}."},
    {3144, "Syntax error in UPDATE statement{ (|)}."},
    {3163, "The field '|' is too small to accept the amount of data you attempted to add."},
    {3164, "The field '|' cannot be updated."},
    {3167, "Record is deleted."},
    {3190, "Too many fields defined."},
    {3191, "Cannot define field '|' more than once."},
    {3204, "Database already exists."},
    {3211, "The table{ '|'} is in use and cannot be changed."},
    {3219, "Invalid operation."},
    {3246, "Operation is not supported in transactions."},
    {3251, "Operation is not supported{: |}."},
    {3259, "Invalid field data type{: |}."},
    {3264, "No field defined; cannot append TableDef or Index."},
    {3265, "Item{ '|'} not found in this collection."},
    {3280, "Cannot delete the field '|' that is part of an index."},
    {3283, "Primary key already exists."},
    {3284, "Index '|' already exists."},
    {3289, "Syntax error in CONSTRAINT clause{ (|)}."},
    {3290, "Syntax error in CREATE TABLE statement{ (|)}."},
    {3291, "Syntax error in CREATE INDEX statement{ (|)}."},
    {3292, "Syntax error in field definition{ (|)}."},
    {3293, "Syntax error in ALTER TABLE statement{ (|)}."},
    {3294, "Syntax error in DROP INDEX statement{ (|)}."},
    {3295, "Syntax error in DROP TABLE or DROP INDEX{ (|)}."},
    {3306, "A subquery used as a value must select exactly one field."},
    {3307, "The number of columns in the two selected tables or queries of a union query do not match."},
    {3314, "The field '|' cannot contain a Null value because the Required property is set to True."},
    {3315, "Field '|' cannot be a zero-length string."},
    {3316, "|"},
    {3317,
     "One or more values are prohibited by the validation rule |. Enter a value that the expression for this field can "
     "accept."},
    {3343, "Unrecognized database format{: |}."},
    {3346, "Number of query values and destination fields are not the same."},
    {3354, "At most one record can be returned by this subquery."},
    {3360, "Query is too complex."},
    {3372, "No such index '|'."},
    {3375, "Table already has an index named '|'."},
    {3376, "Table '|' does not exist."},
    {3380, "Field '|' already exists in the table."},
    {3381, "There is no field named '|'."},
    {3409, "Invalid field definition '|' in definition of index or relationship."},
    {3411, "Size of field '|' is not valid."},
    {3420, "Object invalid or no longer set."},
    {3421, "Data type conversion error{ in field '|'}."},
    {3464, "Data type mismatch in criteria expression."},
};

static_assert(std::ranges::is_sorted(error_texts, {}, &ErrorText::number));

constexpr int internal_error = 51;

std::string text_of(int number, std::string_view detail) {
  const auto* found = std::ranges::lower_bound(error_texts, number, {}, &ErrorText::number);
  if (found == std::end(error_texts) || found->number != number) return text_of(internal_error, {});
  std::string text(found->text);
  if (const std::size_t begin = text.find('{'); begin != std::string::npos) {
    const std::size_t end = text.find('}');
    const std::string part = text.substr(begin + 1, end - begin - 1);
    text.replace(begin, end + 1 - begin, detail.empty() ? "" : part);
  }
  if (const std::size_t place = text.find('|'); place != std::string::npos) text.replace(place, 1, detail);
  return text;
}

}  // namespace

support::RuntimeError engine_error(int number, std::string_view detail) { return {number, text_of(number, detail)}; }

void raise(int number, std::string_view detail) { throw engine_error(number, detail); }

}  // namespace engine
