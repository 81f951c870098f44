// Gives the names of a tree their meaning against the catalogue and every expression its type, and refuses what has
// none: unknown tables and columns, texts compared with numbers, aggregates where none can be.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

class Binder {
 public:
  explicit Binder(const Catalogue& catalogue) : catalogue_(catalogue) {}

  /// Names that stand for parameters, whatever columns there are.
  void declare(const std::vector<std::string>& parameters);
  /// Of a crosstab without a list of its own; Null is nothing.
  void set_headings(std::vector<std::optional<std::string>> headings) { headings_ = std::move(headings); }

  void bind(SelectStatement& statement);
  void bind(InsertStatement& statement);
  void bind(UpdateStatement& statement);
  void bind(DeleteStatement& statement);
  /// An expression without columns, as a default is. `Now`, `Date` and `Time` need no parentheses.
  void bind_default(Expression& expression);
  /// A condition on a row, which is the one source of `row`.
  void bind_rule(const ExpressionPtr& condition, Select& row);

  /// 3078 where there is none.
  const TableDefinition& table(std::string_view name) const;

 private:
  /// What names mean at one place: the sources of a SELECT, its aliases where they count, then the query around it.
  struct Scope {
    Scope* outer = nullptr;
    Select* select = nullptr;
    std::vector<const Source*> visible;
    bool aliases = false;
    /// Error for an aggregate here; 0 where one may stand.
    error_number::Number aggregate_error = error_number::none;
  };

  void bind_query(QueryTree& query, Scope* outer);
  void bind_select(QueryTree& query, Select& select, Scope* outer);
  void bind_pivot(Pivot& pivot, Scope& scope);
  void bind_items(Select& select, Scope& scope);
  void bind_item(SelectItem& item, Scope& scope);
  void bind_rows(Select& rows, Scope& scope);
  void bind_from(TableReference& reference, Scope& scope);
  void bind_join(Join& join, Scope& scope);
  Source& add_source(Scope& scope, std::string name);
  void count_tables(Scope* scope, std::size_t tables);

  // Output columns (binder_output.cpp)
  void collect_outputs(Select& select);
  void expand_star(Select& select, const SelectItem& item);
  void name_outputs(Select& select);
  void add_headings(Select& select) const;
  void unite_outputs(QueryTree& query);
  void bind_order(QueryTree& query, Select& select, Scope& scope);
  void bind_union_order(QueryTree& query);
  bool is_output(OrderItem& item, const std::vector<OutputColumn>& outputs);
  void check_grouping(const Select& select, const QueryTree& query);
  void check_grouped(const Select& select, const Expression& expression);
  bool is_group(const Select& select, const Expression& expression);

  // Expressions (binder_expression.cpp)
  void bind(Expression& expression, Scope& scope);
  void bind(const ExpressionPtr& expression, Scope& scope);
  void bind_criterion(const ExpressionPtr& expression, Scope& scope);
  void bind_node(Expression& expression, Literal& literal, Scope& scope);
  void bind_node(Expression& expression, ColumnName& name, Scope& scope);
  void bind_node(Expression& expression, Unary& unary, Scope& scope);
  void bind_node(Expression& expression, Binary& binary, Scope& scope);
  void bind_node(Expression& expression, Between& between, Scope& scope);
  void bind_node(Expression& expression, Like& like, Scope& scope);
  void bind_node(Expression& expression, NullTest& test, Scope& scope);
  void bind_node(Expression& expression, InList& list, Scope& scope);
  void bind_node(Expression& expression, InSelect& in, Scope& scope);
  void bind_node(Expression& expression, Quantified& quantified, Scope& scope);
  void bind_node(Expression& expression, Exists& exists, Scope& scope);
  void bind_node(Expression& expression, ScalarSelect& select, Scope& scope);
  void bind_node(Expression& expression, Call& call, Scope& scope);
  void bind_arguments(Call& call, Scope& scope);
  /// False where no source of the scope has the column; 3079 where several have.
  bool find_column(const Scope& scope, ColumnName& name) const;
  void take_parameter(Expression& expression, const ColumnName& name);
  bool find_alias(Scope& scope, ColumnName& name);
  bool find_function_without_parentheses(Expression& expression, const ColumnName& name);
  /// Raises the levels to at least one more than the part's, and takes over what the part contains.
  void contain(Expression& whole, const ExpressionPtr& part);
  void contain(Expression& whole, int height) const;
  void raise_unknown_names() const;

  const Catalogue& catalogue_;
  std::size_t source_count_ = 0;
  /// Names that mean nothing, in lower case: the engine takes each for a parameter without a value.
  std::set<std::string> unknown_names_;
  std::vector<std::optional<std::string>> headings_;
  std::set<std::string> parameters_;  ///< declared ones, in lower case
  bool functions_without_parentheses_ = false;
};

}  // namespace engine::embedded::jet_sql
