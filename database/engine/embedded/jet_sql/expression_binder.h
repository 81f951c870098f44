// Looks up the names in an expression and gives every expression its type.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

class Binder;

/// What names mean at one place: first the sources of a SELECT, then its aliases where they count, then the query
/// around it.
struct Scope {
  Scope* outer = nullptr;
  Select* select = nullptr;
  std::vector<const Source*> visible;
  bool aliases = false;
  /// The error of an aggregate at this place; none where an aggregate may stand.
  error_number::Number aggregate_error = error_number::none;

  /// Raises 3360 where the SELECT gets too many tables.
  void count_tables(std::size_t tables) const;
};

class ExpressionBinder {
 public:
  /// `queries` binds the queries inside an expression.
  explicit ExpressionBinder(Binder& queries) : queries_(queries) {}

  /// These names stand for parameters, whatever columns there are.
  void declare(const std::vector<std::string>& parameters);
  /// `Now`, `Date` and `Time` need no parentheses.
  void take_functions_without_parentheses() noexcept { functions_without_parentheses_ = true; }

  void bind(Expression& expression, Scope& scope);
  void bind(const ExpressionPtr& expression, Scope& scope) { bind(*expression, scope); }
  /// Binds a condition. Raises 3464 for a text.
  void bind_criterion(const ExpressionPtr& expression, Scope& scope);
  /// Returns false where no source of the scope has the column. Raises 3079 where several have it.
  bool find_column(const Scope& scope, ColumnName& name) const;

  /// Notes a name that means nothing: the engine takes it for a parameter without a value.
  void add_unknown_name(std::string_view name);
  /// Raises 3061 with the number of these names, where there are any.
  void raise_unknown_names() const;

 private:
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
  void bind_subselect(Expression& whole, QueryTree& query, Scope& scope);
  void take_parameter(Expression& expression, const ColumnName& name);
  bool find_alias(Scope& scope, ColumnName& name);
  bool find_function_without_parentheses(Expression& expression, const ColumnName& name);
  /// Makes the whole at least one level higher than the part, and notes that it contains what the part contains.
  void contain(Expression& whole, const ExpressionPtr& part);
  void contain(Expression& whole, int height) const;

  Binder& queries_;
  std::set<std::string> unknown_names_;  ///< in lower case
  std::set<std::string> parameters_;     ///< declared parameters, in lower case
  bool functions_without_parentheses_ = false;
};

}  // namespace engine::embedded::jet_sql
