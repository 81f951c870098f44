// Looks up the names of a tree in the catalogue and gives every expression its type. Refuses what has no meaning:
// unknown tables and columns, texts compared with numbers, aggregates where none may stand.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/expression_binder.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

class Binder {
 public:
  explicit Binder(const Catalogue& catalogue) : catalogue_(catalogue) {}
  Binder(const Binder&) = delete;
  Binder& operator=(const Binder&) = delete;

  /// These names stand for parameters, whatever columns there are.
  void declare(const std::vector<std::string>& parameters) { expressions_.declare(parameters); }
  /// The headings of a crosstab that does not list them. Nothing in an element means Null.
  void set_headings(std::vector<std::optional<std::string>> headings) { headings_ = std::move(headings); }

  void bind(SelectStatement& statement);
  void bind(InsertStatement& statement);
  void bind(UpdateStatement& statement);
  void bind(DeleteStatement& statement);
  /// Binds an expression without columns, as a default is. `Now`, `Date` and `Time` need no parentheses.
  void bind_default(Expression& expression);
  /// Binds a condition on a row, which is the only source of `row`.
  void bind_rule(const ExpressionPtr& condition, Select& row);

  /// Raises 3078 where there is no such table.
  const TableDefinition& table(std::string_view name) const;

  /// Binds a query inside the scope.
  void bind_query(QueryTree& query, Scope* outer);
  void bind_item(SelectItem& item, Scope& scope);

 private:
  void bind_select(QueryTree& query, Select& select, Scope* outer);
  void bind_pivot(Pivot& pivot, Scope& scope);
  void bind_items(Select& select, Scope& scope);
  void bind_rows(Select& rows, Scope& scope);
  void bind_from(TableReference& reference, Scope& scope);
  void bind_join(Join& join, Scope& scope);
  Source& add_source(Scope& scope, std::string name);
  void bind_order(QueryTree& query, Select& select, Scope& scope);
  void bind_union_order(QueryTree& query);

  const Catalogue& catalogue_;
  std::size_t source_count_ = 0;
  ExpressionBinder expressions_{*this};
  std::vector<std::optional<std::string>> headings_;
};

}  // namespace engine::embedded::jet_sql
