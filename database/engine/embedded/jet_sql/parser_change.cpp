#include <utility>

#include "database/engine/embedded/jet_sql/parser.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

InsertStatement Parser::parse_insert() {
  clause_ = error_number::insert_syntax;
  expect_word("INTO");
  InsertStatement insert;
  insert.table = expect_name();
  if (at_word("IN")) raise(error_number::not_supported, "INSERT INTO another database");
  if (peek().is_symbol("(")) insert.fields = parse_names();
  if (accept_word("VALUES")) {
    expect_symbol("(");
    insert.values = parse_list();
    expect_symbol(")");
    if (peek().is_symbol(",")) raise(error_number::not_supported, "several rows of VALUES");
    return insert;
  }
  if (at_word("DEFAULT") && at_word("VALUES", 1)) raise(error_number::not_supported, "DEFAULT VALUES");
  if (!at_query()) fail_here();
  insert.query = parse_query(nullptr);
  return insert;
}

UpdateStatement Parser::parse_update() {
  clause_ = error_number::update_syntax;
  UpdateStatement update;
  update.rows.from = parse_from();
  clause_ = error_number::update_syntax;
  expect_word("SET");
  do {
    Assignment assignment;
    assignment.target.column = expect_name();
    if (accept_symbol(".") || accept_symbol("!")) {
      assignment.target.table = std::exchange(assignment.target.column, {});
      assignment.target.column = expect_any_name();
    }
    expect_symbol("=");
    assignment.value = parse_expression();
    update.assignments.push_back(std::move(assignment));
  } while (accept_symbol(","));
  if (accept_word("WHERE")) {
    update.rows.where = parse_expression();
    clause_ = error_number::expression_syntax;
  }
  return update;
}

DeleteStatement Parser::parse_delete() {
  clause_ = error_number::delete_syntax;
  DeleteStatement deletion;
  accept_word("DISTINCTROW");
  if (!accept_symbol("*") && !at_word("FROM")) {
    deletion.table = expect_name();
    expect_symbol(".");
    expect_symbol("*");
  }
  expect_word("FROM");
  deletion.rows.from = parse_from();
  if (accept_word("WHERE")) {
    deletion.rows.where = parse_expression();
    clause_ = error_number::expression_syntax;
  }
  return deletion;
}

}  // namespace engine::embedded::jet_sql
