#include "database/engine/embedded/jet_sql/jet_error.h"

#include <algorithm>
#include <iterator>

namespace engine::embedded::jet_sql {

namespace {

struct Description {
  int number;
  std::string_view text;  // "|" is where the name stands
};

constexpr Description error_descriptions[] = {
    {error_invalid_call, "Invalid procedure call or argument."},
    {error_overflow, "Overflow."},
    {error_invalid_pattern, "Invalid pattern string."},
    {error_division_by_zero, "Division by zero."},
    {error_type_mismatch, "Type mismatch."},
    {error_table_exists, "Table '|' already exists."},
    {error_duplicate_value,
     "The changes were not made because they would create duplicate values in an index or primary key."},
    {error_too_few_parameters, "Too few parameters. Expected |."},
    {error_duplicate_destination, "Duplicate output destination '|'."},
    {error_no_input, "Query input must contain at least one table or query."},
    {error_repeated_table, "Cannot repeat table name '|' in FROM clause."},
    {error_expression_syntax, "Syntax error in query expression."},
    {error_unknown_table, "The input table or query '|' cannot be found."},
    {error_ambiguous_field, "The field '|' could refer to more than one table listed in the FROM clause."},
    {error_unknown_function, "Undefined function '|' in expression."},
    {error_order_with_distinct, "ORDER BY clause conflicts with DISTINCT."},
    {error_aggregate_in_expression, "Cannot have an aggregate function in an expression of this kind."},
    {error_aggregate_in_where, "Cannot have an aggregate function in a WHERE clause."},
    {error_aggregate_in_order_by, "Cannot have an aggregate function in this ORDER BY clause."},
    {error_aggregate_in_group_by, "Cannot have an aggregate function in a GROUP BY clause."},
    {error_aggregate_in_join, "Cannot have an aggregate function in a JOIN operation."},
    {error_circular_alias, "Circular reference caused by alias '|' in the query's SELECT list."},
    {error_field_not_updatable, "Cannot update '|'; field not updatable."},
    {error_group_on_star, "Cannot group on fields selected with '*'."},
    {error_not_in_aggregate, "The query does not include the expression '|' as part of an aggregate function."},
    {error_invalid_name, "'|' is not a valid name."},
    {error_invalid_bracketing, "Invalid bracketing of a name."},
    {error_insert_unknown_field, "The INSERT INTO statement contains the following unknown field name: '|'."},
    {error_no_statement,
     "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', 'UPDATE', 'CREATE', 'ALTER' or 'DROP'."},
    {error_delete_syntax, "Syntax error in DELETE statement."},
    {error_from_syntax, "Syntax error in FROM clause."},
    {error_group_by_syntax, "Syntax error in GROUP BY clause."},
    {error_insert_syntax, "Syntax error in INSERT INTO statement."},
    {error_join_syntax, "Syntax error in JOIN operation."},
    {error_order_by_syntax, "Syntax error in ORDER BY clause."},
    {error_select_syntax,
     "The SELECT statement includes a reserved word or an argument name that is misspelled or missing, or the "
     "punctuation is incorrect."},
    {error_text_after_end, "Characters found after end of SQL statement."},
    {error_update_syntax, "Syntax error in UPDATE statement."},
    {error_field_too_small, "The field is too small to accept the amount of data."},
    {error_too_many_fields, "Too many fields defined."},
    {error_field_defined_twice, "Cannot define field '|' more than once."},
    {error_not_supported, "Operation is not supported: |."},
    {error_invalid_data_type, "Invalid field data type."},
    {error_primary_key_exists, "Primary key already exists."},
    {error_constraint_syntax, "Syntax error in CONSTRAINT clause."},
    {error_create_table_syntax, "Syntax error in CREATE TABLE statement."},
    {error_create_index_syntax, "Syntax error in CREATE INDEX statement."},
    {error_field_definition_syntax, "Syntax error in field definition."},
    {error_alter_table_syntax, "Syntax error in ALTER TABLE statement."},
    {error_drop_index_syntax, "Syntax error in DROP INDEX statement."},
    {error_drop_syntax, "Syntax error in DROP TABLE or DROP INDEX."},
    {error_subquery_columns, "A subquery used as a value must select exactly one field."},
    {error_union_columns, "The number of columns in the two selected tables or queries of a union query do not match."},
    {error_field_required, "The field '|' cannot contain a Null value because its Required property is True."},
    {error_zero_length, "Field '|' cannot be a zero-length string."},
    {error_value_count, "Number of query values and destination fields are not the same."},
    {error_one_record, "At most one record can be returned by this subquery."},
    {error_too_complex, "Query is too complex."},
    {error_no_such_index, "No such index '|'."},
    {error_index_exists, "Table already has an index named '|'."},
    {error_no_such_table, "Table '|' does not exist."},
    {error_field_exists, "Field '|' already exists in the table."},
    {error_no_such_field, "There is no field named '|' in the table."},
    {error_index_field, "Invalid field name '|' in definition of index or relationship."},
    {error_field_size, "Size of field '|' is not valid."},
    {error_conversion, "Data type conversion error."},
    {error_criterion_mismatch, "Data type mismatch in criteria expression."},
};

}  // namespace

std::string description_of(int number, std::string_view name) {
  const auto* const found = std::find_if(std::begin(error_descriptions), std::end(error_descriptions),
                                         [number](const Description& row) { return row.number == number; });
  if (found == std::end(error_descriptions)) return {};
  std::string text(found->text);
  if (const std::size_t mark = text.find('|'); mark != std::string::npos) text.replace(mark, 1, name);
  return text;
}

void fail(int number, std::string_view name) { throw support::RuntimeError(number, description_of(number, name)); }

}  // namespace engine::embedded::jet_sql
