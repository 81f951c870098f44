#include "support/error_number.h"

#include <algorithm>
#include <iterator>

namespace support {
namespace {

using namespace error_number;

struct ErrorText {
  Number number;
  /// "|" is the place of the detail. The part in braces is left out if there is no detail.
  std::string_view text;
};

// A text may hold names of tables and fields, but never values or paths: these texts get into the error journal, which
// must hold no patient's data.
constexpr ErrorText error_texts[] = {
    {invalid_call, "Invalid procedure call or argument."},
    {overflow, "Overflow."},
    {out_of_memory, "Out of memory."},
    {division_by_zero, "Division by zero."},
    {type_mismatch, "Type mismatch."},
    {out_of_string_space, "Out of string space."},
    {internal_error, "Internal error of the database engine."},
    {no_object, "Object variable not set."},
    {invalid_pattern, "Invalid pattern string."},
    {invalid_null, "Invalid use of Null."},
    {invalid_argument, "Invalid argument."},
    {table_exists, "Table '|' already exists."},
    {no_edit, "Update or CancelUpdate without AddNew or Edit."},
    {no_current_record, "No current record."},
    {duplicate_value, "The changes would create duplicate values in an index or primary key."},
    {file_not_found, "The database file could not be found."},
    {read_only, "Cannot update. Database or object is read-only."},
    {wrong_password, "Not a valid password."},
    {no_transaction, "You tried to commit or rollback a transaction without first beginning a transaction."},
    {disk_error, "Disk or network error{: |}."},
    {invalid_path, "The folder of the database file is not a valid path: it does not exist, or is no folder."},
    {file_in_use, "Could not use the database file; it is already in use."},
    {file_not_opened,
     "The database file cannot be opened: it is opened exclusively by another user, or you need permission."},
    {null_in_key, "Index or primary key cannot contain a Null value."},
    {cancelled, "Operation canceled by user."},
    {too_few_parameters, "Too few parameters. Expected |."},
    {duplicate_destination, "Duplicate output destination '|'."},
    {select_executed, "Cannot execute a select query."},
    {no_input, "Query input must contain at least one table or query."},
    {repeated_table, "Cannot repeat table name '|' in FROM clause."},
    {expression_syntax, "Syntax error in query expression{ (|)}."},
    {unknown_table, "The input table or query '|' cannot be found."},
    {ambiguous_field, "The field '|' could refer to more than one table listed in the FROM clause."},
    {unknown_function, "Undefined function '|' in expression."},
    {order_with_distinct, "ORDER BY clause conflicts with DISTINCT."},
    {aggregate_in_expression, "Cannot have an aggregate function in an expression of this kind."},
    {aggregate_in_where, "Cannot have an aggregate function in a WHERE clause."},
    {aggregate_in_order_by, "Cannot have an aggregate function in this ORDER BY clause."},
    {aggregate_in_group_by, "Cannot have an aggregate function in a GROUP BY clause."},
    {aggregate_in_join, "Cannot have an aggregate function in a JOIN operation."},
    {circular_alias, "Circular reference caused by alias '|' in the query's SELECT list."},
    {repeated_heading, "Cannot specify fixed column heading '|' in a crosstab query more than once."},
    {field_not_updatable, "Cannot update '|'; field not updatable."},
    {group_on_star, "Cannot group on fields selected with '*'."},
    {not_in_aggregate, "The query does not include the expression '|' as part of an aggregate function."},
    {invalid_name, "'|' is not a valid name."},
    {invalid_bracketing, "Invalid bracketing of a name{ (|)}."},
    {insert_unknown_field, "The INSERT INTO statement contains the following unknown field name: '|'."},
    {no_table_to_delete_from, "Specify the table containing the records you want to delete."},
    {no_statement,
     "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', 'UPDATE', 'CREATE', 'ALTER', 'DROP', 'TRANSFORM' "
     "or 'PARAMETERS'{ (|)}."},
    {delete_syntax, "Syntax error in DELETE statement{ (|)}."},
    {from_syntax, "Syntax error in FROM clause{ (|)}."},
    {group_by_syntax, "Syntax error in GROUP BY clause{ (|)}."},
    {insert_syntax, "Syntax error in INSERT INTO statement{ (|)}."},
    {join_syntax, "Syntax error in JOIN operation{ (|)}."},
    {missing_semicolon, "Missing semicolon (;) at end of SQL statement{ (|)}."},
    {order_by_syntax, "Syntax error in ORDER BY clause{ (|)}."},
    {parameters_syntax, "Syntax error in PARAMETERS clause{ (|)}."},
    {select_syntax,
     "The SELECT statement includes a reserved word or an argument name that is misspelled or missing, or the "
     "punctuation is incorrect{ (|)}."},
    {text_after_end, "Characters found after end of SQL statement{ (|)}."},
    {transform_syntax, "Syntax error in TRANSFORM statement{ (|)}."},
    {update_syntax, "Syntax error in UPDATE statement{ (|)}."},
    {field_too_small, "The field '|' is too small to accept the amount of data you attempted to add."},
    {field_not_writable, "The field '|' cannot be updated."},
    {record_deleted, "Record is deleted."},
    {too_many_fields, "Too many fields defined."},
    {field_defined_twice, "Cannot define field '|' more than once."},
    {database_exists, "Database already exists."},
    {table_in_use, "The table{ '|'} is in use and cannot be changed."},
    {invalid_operation, "Invalid operation."},
    {not_in_transaction, "Operation is not supported in transactions."},
    {not_supported, "Operation is not supported{: |}."},
    {invalid_data_type, "Invalid field data type{: |}."},
    {no_field_defined, "No field defined; cannot append TableDef or Index."},
    {item_not_found, "Item{ '|'} not found in this collection."},
    {field_is_indexed, "Cannot delete the field '|' that is part of an index."},
    {primary_key_exists, "Primary key already exists."},
    {index_already_exists, "Index '|' already exists."},
    {constraint_syntax, "Syntax error in CONSTRAINT clause{ (|)}."},
    {create_table_syntax, "Syntax error in CREATE TABLE statement{ (|)}."},
    {create_index_syntax, "Syntax error in CREATE INDEX statement{ (|)}."},
    {field_definition_syntax, "Syntax error in field definition{ (|)}."},
    {alter_table_syntax, "Syntax error in ALTER TABLE statement{ (|)}."},
    {drop_index_syntax, "Syntax error in DROP INDEX statement{ (|)}."},
    {drop_syntax, "Syntax error in DROP TABLE or DROP INDEX{ (|)}."},
    {subquery_columns, "A subquery used as a value must select exactly one field."},
    {union_columns, "The number of columns in the two selected tables or queries of a union query do not match."},
    {field_required, "The field '|' cannot contain a Null value because the Required property is set to True."},
    {zero_length, "Field '|' cannot be a zero-length string."},
    {rule_text, "|"},
    {rule_breached,
     "One or more values are prohibited by the validation rule |. Enter a value that the expression for this field can "
     "accept."},
    {unknown_format, "Unrecognized database format{: |}."},
    {value_count, "Number of query values and destination fields are not the same."},
    {one_record, "At most one record can be returned by this subquery."},
    {too_complex, "Query is too complex."},
    {no_such_index, "No such index '|'."},
    {index_exists, "Table already has an index named '|'."},
    {no_such_table, "Table '|' does not exist."},
    {field_exists, "Field '|' already exists in the table."},
    {no_such_field, "There is no field named '|'."},
    {index_field, "Invalid field definition '|' in definition of index or relationship."},
    {field_size, "Size of field '|' is not valid."},
    {object_invalid, "Object invalid or no longer set."},
    {conversion, "Data type conversion error{ in field '|'}."},
    {criterion_mismatch, "Data type mismatch in criteria expression."},
};

static_assert(std::ranges::is_sorted(error_texts, {}, &ErrorText::number));

}  // namespace

std::string error_text(int number, std::string_view detail) {
  const auto* found = std::ranges::lower_bound(error_texts, number, {}, &ErrorText::number);
  if (found == std::end(error_texts) || found->number != number) return error_text(internal_error, {});
  std::string text(found->text);
  if (const std::size_t begin = text.find('{'); begin != std::string::npos) {
    const std::size_t end = text.find('}');
    const std::string part = text.substr(begin + 1, end - begin - 1);
    text.replace(begin, end + 1 - begin, detail.empty() ? "" : part);
  }
  if (const std::size_t place = text.find('|'); place != std::string::npos) text.replace(place, 1, detail);
  return text;
}

}  // namespace support
