#include "database/engine/embedded/jet_sql/parser.h"

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
    statement = changes_.parse_insert();
  } else if (cursor_.accept_word("UPDATE")) {
    statement = changes_.parse_update();
  } else if (cursor_.accept_word("DELETE")) {
    statement = changes_.parse_delete();
  } else {
    statement = parse_layout_change();
  }
  cursor_.expect_end();
  return statement;
}

/// Takes no parameters.
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

}  // namespace engine::embedded::jet_sql
