#include "database/engine/embedded/jet_sql/parser.h"

#include <utility>

#include "database/engine/embedded/jet_sql/refusal.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

Statement Parser::parse_statement() {
  cursor_.set_clause(error_number::no_statement);
  if (cursor_.accept_word("PARAMETERS")) parameters_ = definitions_.parse_parameters();
  refuse_statement(cursor_);
  Statement statement;
  if (queries_.at_query()) {
    SelectStatement select;
    select.query = queries_.parse_query(&select);
    statement = std::move(select);
  } else if (cursor_.accept_word("TRANSFORM")) {
    statement = queries_.parse_transform();
  } else if (cursor_.accept_word("INSERT")) {
    statement = parse_insert();
  } else if (cursor_.accept_word("UPDATE")) {
    statement = parse_update();
  } else if (cursor_.accept_word("DELETE")) {
    statement = parse_delete();
  } else {
    statement = parse_layout_change();
  }
  cursor_.expect_end();
  return statement;
}

/// These statements take no parameters.
Statement Parser::parse_layout_change() {
  if (parameters_.empty()) {
    if (cursor_.accept_word("CREATE")) return definitions_.parse_create();
    if (cursor_.accept_word("ALTER")) return definitions_.parse_alter();
    if (cursor_.accept_word("DROP")) return definitions_.parse_drop();
  }
  cursor_.fail_here();
}

ExpressionPtr Parser::parse_lone_expression() {
  cursor_.set_clause(error_number::expression_syntax);
  cursor_.accept_symbol("=");
  ExpressionPtr expression = expressions_.parse_expression();
  cursor_.expect_end();
  return expression;
}

ExpressionPtr Parser::parse_rule(std::string_view field) {
  cursor_.set_clause(error_number::expression_syntax);
  expressions_.set_implied_field(field);
  ExpressionPtr rule = expressions_.parse_expression();
  cursor_.expect_end();
  return rule;
}

InsertStatement Parser::parse_insert() {
  cursor_.set_clause(error_number::insert_syntax);
  cursor_.expect_word("INTO");
  InsertStatement insert;
  insert.table = cursor_.expect_name();
  if (cursor_.at_word("IN")) raise(error_number::not_supported, "INSERT INTO another database");
  if (cursor_.peek().is_symbol("(")) insert.fields = cursor_.expect_names();
  if (cursor_.accept_word("VALUES")) {
    cursor_.expect_symbol("(");
    insert.values = expressions_.parse_list();
    cursor_.expect_symbol(")");
    if (cursor_.peek().is_symbol(",")) raise(error_number::not_supported, "several rows of VALUES");
    return insert;
  }
  if (cursor_.at_word("DEFAULT") && cursor_.at_word("VALUES", 1)) raise(error_number::not_supported, "DEFAULT VALUES");
  if (!queries_.at_query()) cursor_.fail_here();
  insert.query = queries_.parse_query(nullptr);
  return insert;
}

UpdateStatement Parser::parse_update() {
  cursor_.set_clause(error_number::update_syntax);
  UpdateStatement update;
  update.rows.from = queries_.parse_from();
  cursor_.set_clause(error_number::update_syntax);
  cursor_.expect_word("SET");
  do {
    Assignment assignment;
    assignment.target.column = cursor_.expect_name();
    if (cursor_.accept_symbol(".") || cursor_.accept_symbol("!")) {
      assignment.target.table = std::exchange(assignment.target.column, {});
      assignment.target.column = cursor_.expect_any_name();
    }
    cursor_.expect_symbol("=");
    assignment.value = expressions_.parse_expression();
    update.assignments.push_back(std::move(assignment));
  } while (cursor_.accept_symbol(","));
  if (cursor_.accept_word("WHERE")) {
    update.rows.where = expressions_.parse_expression();
    cursor_.set_clause(error_number::expression_syntax);
  }
  return update;
}

DeleteStatement Parser::parse_delete() {
  cursor_.set_clause(error_number::delete_syntax);
  DeleteStatement deletion;
  cursor_.accept_word("DISTINCTROW");
  if (!cursor_.accept_symbol("*") && !cursor_.at_word("FROM")) {
    deletion.table = cursor_.expect_name();
    cursor_.expect_symbol(".");
    cursor_.expect_symbol("*");
  }
  cursor_.expect_word("FROM");
  deletion.rows.from = queries_.parse_from();
  if (cursor_.accept_word("WHERE")) {
    deletion.rows.where = expressions_.parse_expression();
    cursor_.set_clause(error_number::expression_syntax);
  }
  return deletion;
}

}  // namespace engine::embedded::jet_sql
