// From tokens to the syntax tree: recursive descent, with a parser for each kind of clause over one cursor. Every
// failure is a RuntimeError with the number of the clause that was being read.
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

  /// The statement, which must be all of the text but a ";" at its end.
  Statement parse_statement();
  /// The names that the statement's PARAMETERS clause declares.
  const std::vector<std::string>& parameters() const noexcept { return parameters_; }
  /// An expression that is all of the text; a "=" may stand before it.
  ExpressionPtr parse_lone_expression();
  /// A condition that is all of the text. A comparison, LIKE, BETWEEN, IN or IS with nothing before it speaks of the
  /// field.
  ExpressionPtr parse_rule(std::string_view field);

 private:
  // Each reads its statement behind the first word.
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
