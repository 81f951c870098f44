// Builds the syntax tree from tokens by recursive descent. Each kind of clause has a parser; all of them read through
// one cursor. Every failure is a RuntimeError with the number of the clause that was being read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/definition_parser.h"
#include "database/engine/embedded/jet_sql/query_parser.h"
#include "database/engine/embedded/jet_sql/token_cursor.h"

namespace engine::embedded::jet_sql {

class Parser {
 public:
  explicit Parser(std::string_view statement) : cursor_(statement) {}

  /// Reads a statement. It must be the whole text, except for a ";" at its end.
  Statement parse_statement();
  /// The names that the statement's PARAMETERS clause declares.
  const std::vector<std::string>& parameters() const noexcept { return parameters_; }
  /// Reads an expression that is the whole text; a "=" may stand before it.
  ExpressionPtr parse_lone_expression();
  /// Reads a condition that is the whole text. A comparison, LIKE, BETWEEN, IN or IS with nothing before it is about
  /// the field.
  ExpressionPtr parse_rule(std::string_view field);

 private:
  // Each reads its statement from behind the first word.
  InsertStatement parse_insert();
  UpdateStatement parse_update();
  DeleteStatement parse_delete();
  Statement parse_layout_change();

  TokenCursor cursor_;
  QueryParser queries_{cursor_};
  ExpressionParser& expressions_ = queries_.expressions();
  DefinitionParser definitions_{cursor_, expressions_};
  std::vector<std::string> parameters_;
};

}  // namespace engine::embedded::jet_sql
