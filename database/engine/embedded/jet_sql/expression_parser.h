// Reads expressions, by precedence climbing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/token_cursor.h"

namespace engine::embedded::jet_sql {

class QueryParser;

class ExpressionParser {
 public:
  ExpressionParser(TokenCursor& cursor, QueryParser& queries) : cursor_(cursor), queries_(queries) {}

  ExpressionPtr parse_expression();
  /// Reads one operand with the signs before it.
  ExpressionPtr parse_prefix();
  std::vector<ExpressionPtr> parse_list();

  /// The field that the conditions of a rule are about; empty elsewhere.
  void set_implied_field(std::string_view field) { implied_field_ = field; }
  /// For the query of a TRANSFORM: there PIVOT ends an expression.
  void set_in_transform(bool in_transform) noexcept { in_transform_ = in_transform; }
  /// For the expression behind PIVOT: there IN begins the list of headings.
  void set_in_pivot(bool in_pivot) noexcept { in_pivot_ = in_pivot; }

 private:
  ExpressionPtr parse_binary(int lowest_precedence);
  ExpressionPtr parse_minus();
  ExpressionPtr parse_primary();
  ExpressionPtr parse_prefixed_number();
  ExpressionPtr parse_word();
  ExpressionPtr parse_call();
  ExpressionPtr parse_column();
  ExpressionPtr parse_parenthesis();
  bool at_quantifier() const noexcept;
  ExpressionPtr parse_quantified(BinaryOperator op, ExpressionPtr value);
  bool at_predicate() const noexcept;
  bool lacks_field(int lowest_precedence) const noexcept;
  ExpressionPtr parse_predicate(ExpressionPtr value);
  ExpressionPtr parse_between(ExpressionPtr value, bool negated);
  ExpressionPtr parse_in(ExpressionPtr value, bool negated);

  TokenCursor& cursor_;
  QueryParser& queries_;
  std::string implied_field_;
  bool in_transform_ = false;
  bool in_pivot_ = false;
};

}  // namespace engine::embedded::jet_sql
