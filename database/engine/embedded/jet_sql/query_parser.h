// Reads SELECT, unions and TRANSFORM, and the FROM clause, which other statements have as well.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/expression_parser.h"
#include "database/engine/embedded/jet_sql/token_cursor.h"

namespace engine::embedded::jet_sql {

class QueryParser {
 public:
  explicit QueryParser(TokenCursor& cursor) : cursor_(cursor), expressions_(cursor, *this) {}
  QueryParser(const QueryParser&) = delete;
  QueryParser& operator=(const QueryParser&) = delete;

  ExpressionParser& expressions() noexcept { return expressions_; }

  /// True at a SELECT, and at a parenthesis that begins a union.
  bool at_query(std::size_t ahead = 0) const noexcept;
  /// With `into`, reads INTO and IN and stores them there. Without it, they are not part of a query.
  QueryPtr parse_query(SelectStatement* into);
  SelectStatement parse_transform();
  std::vector<TableReferencePtr> parse_from();

 private:
  std::size_t behind_parenthesis(std::size_t ahead) const noexcept;
  std::unique_ptr<Select> parse_member(SelectStatement* into);
  std::unique_ptr<Select> parse_whole_table();
  std::unique_ptr<Select> parse_select(SelectStatement* into);
  void parse_pivot(Pivot& pivot);
  void parse_predicates(Select& select);
  void parse_items(Select& select);
  SelectItem parse_item();
  void parse_into(SelectStatement& statement);
  void parse_external(SelectStatement* statement);
  void parse_groups(Select& select);
  std::vector<OrderItem> parse_order_by();
  TableReferencePtr parse_joins();
  TableReferencePtr parse_table();
  bool accept_join(JoinKind& kind);

  TokenCursor& cursor_;
  ExpressionParser expressions_;
  int select_depth_ = 0;
};

}  // namespace engine::embedded::jet_sql
