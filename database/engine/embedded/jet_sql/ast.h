// The syntax tree: one struct for each kind of expression and statement. The parser fills it. The binder adds what it
// finds out, in the members under "bound".
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/jet_sql/value_type.h"

namespace engine::embedded::jet_sql {

struct Expression;
struct QueryTree;
struct FunctionRow;
using ExpressionPtr = std::unique_ptr<Expression>;
using QueryPtr = std::unique_ptr<QueryTree>;

struct DateLiteral {
  double days = 0;
  friend bool operator==(const DateLiteral&, const DateLiteral&) = default;
};

struct Literal {
  std::variant<std::monostate, bool, std::int64_t, double, DateLiteral, std::string> value;
};

/// A column that a table or a subselect offers.
struct SourceColumn {
  std::string name;
  ValueType type;
  const FieldDefinition* field = nullptr;
};

/// A table or subselect of a FROM clause, as the statement's names see it.
struct Source {
  /// The name by which the statement calls it; "" for a subselect without alias.
  std::string name;
  /// Its name in the SQLite text; no other source has the same.
  std::string sqlite_name;
  const TableDefinition* table = nullptr;
  std::vector<SourceColumn> columns;
};

struct ColumnName {
  std::string table;
  std::string column;
  bool quoted = false;
  // bound: a column of a source, or the expression that an alias of the same SELECT list stands for
  const Source* source = nullptr;
  std::size_t index = 0;
  Expression* alias_of = nullptr;
};

enum class UnaryOperator { Minus, Plus, Not };
struct Unary {
  UnaryOperator op;
  ExpressionPtr operand;
};

enum class BinaryOperator {
  Imp,
  Eqv,
  Xor,
  Or,
  And,
  Equal,
  NotEqual,
  Less,
  Greater,
  LessOrEqual,
  GreaterOrEqual,
  Concatenate,
  Add,
  Subtract,
  Modulo,
  WholeDivide,
  Multiply,
  Divide,
  Power,
};
struct Binary {
  BinaryOperator op;
  ExpressionPtr left;
  ExpressionPtr right;
};

struct Between {
  ExpressionPtr value;
  ExpressionPtr low;
  ExpressionPtr high;
  bool negated = false;
};

struct Like {
  ExpressionPtr value;
  ExpressionPtr pattern;
  bool negated = false;
};

struct NullTest {
  ExpressionPtr value;
  bool negated = false;
};

struct InList {
  ExpressionPtr value;
  std::vector<ExpressionPtr> items;
  bool negated = false;
};

struct InSelect {
  ExpressionPtr value;
  QueryPtr query;
  bool negated = false;
};

/// ANY (or SOME) and ALL before a subselect.
struct Quantified {
  BinaryOperator op;
  ExpressionPtr value;
  QueryPtr query;
  bool all = false;
};

struct Exists {
  QueryPtr query;
};

struct ScalarSelect {
  QueryPtr query;
};

struct Call {
  std::string function;
  std::vector<ExpressionPtr> arguments;
  bool star = false;  ///< count(*)
  // bound
  const FunctionRow* row = nullptr;
};

struct Expression {
  std::variant<Literal, ColumnName, Unary, Binary, Between, Like, NullTest, InList, InSelect, Quantified, Exists,
               ScalarSelect, Call>
      node;
  /// Number of levels of the tree from here down. It is bounded, so code that walks the tree may recurse.
  int height = 1;
  // bound
  ValueType type;
  bool has_aggregate = false;
};

struct TableReference;
using TableReferencePtr = std::unique_ptr<TableReference>;

struct NamedTable {
  std::string table;
  std::string alias;
  // bound
  Source* source = nullptr;
};

struct DerivedTable {
  QueryPtr query;
  std::string alias;
  // bound
  Source* source = nullptr;
};

enum class JoinKind { Inner, Left, Right };
struct Join {
  JoinKind kind;
  TableReferencePtr left;
  TableReferencePtr right;
  ExpressionPtr condition;
};

struct TableReference {
  std::variant<NamedTable, DerivedTable, Join> node;
  int height = 1;
};

struct Top {
  std::int64_t count = 0;
  bool percent = false;
};

/// An expression with its alias, or "*", or "table.*".
struct SelectItem {
  ExpressionPtr expression;
  std::string alias;
  bool star = false;
  std::string star_table;
  // bound
  enum class State { Unbound, InProgress, Bound } state = State::Unbound;
};

/// A column of a result: an item's expression, or a column that a star stands for.
struct OutputColumn {
  std::string name;
  ValueType type;
  Expression* expression = nullptr;
  const Source* source = nullptr;
  std::size_t index = 0;
  /// Of a crosstab: in the aggregates of the expression, only the rows whose `pivot` has this heading count; no heading
  /// means those where it is Null. `pivot` is null in columns that show one value for all rows of a group.
  const Expression* pivot = nullptr;
  std::optional<std::string> heading = {};
};

/// Of a crosstab: what its cells show, what its columns come from, and the headings where the statement lists them.
struct Pivot {
  ExpressionPtr value;
  ExpressionPtr head;
  std::vector<ExpressionPtr> headings;
};

struct Select {
  bool distinct = false;
  bool distinct_row = false;
  std::optional<Top> top;
  std::vector<SelectItem> items;
  std::vector<TableReferencePtr> from;
  ExpressionPtr where;
  std::vector<ExpressionPtr> group_by;
  ExpressionPtr having;
  std::unique_ptr<Pivot> pivot;
  // bound
  std::deque<Source> sources;
  std::vector<OutputColumn> outputs;
  bool grouped = false;
  /// How many tables SQLite may have to join for this SELECT.
  std::size_t tables = 0;
  /// Names in this SELECT that belong to a query around it.
  std::vector<const Expression*> outer_columns;
};

struct OrderItem {
  ExpressionPtr expression;
  bool descending = false;
  // bound: the output column that the item names; nothing where it is an expression of its own
  std::optional<std::size_t> output;
};

/// One SELECT, or several joined by UNION.
struct QueryTree {
  std::vector<std::unique_ptr<Select>> selects;
  /// Element n: the union of selects n and n + 1 keeps duplicates.
  std::vector<bool> union_all;
  std::vector<OrderItem> order_by;
  int height = 1;
  // bound
  std::vector<OutputColumn> outputs;
  std::size_t tables = 0;
};

/// Where the INTO and IN clauses of a SELECT … INTO stand in the statement's text.
struct TextRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

struct SelectStatement {
  QueryPtr query;
  std::string into;
  std::string external_file;
  TextRange into_clause;
  TextRange in_clause;
};

struct InsertStatement {
  std::string table;
  std::vector<std::string> fields;
  std::vector<ExpressionPtr> values;
  QueryPtr query;  ///< null with VALUES
};

struct Assignment {
  ColumnName target;
  ExpressionPtr value;
};

/// The sources and names of an UPDATE or DELETE are those of a SELECT without items.
struct UpdateStatement {
  Select rows;
  std::vector<Assignment> assignments;
};

struct DeleteStatement {
  Select rows;
  std::string table;  ///< of "table.*"; "" for "*" or nothing
};

using Statement = std::variant<SelectStatement, InsertStatement, UpdateStatement, DeleteStatement, CreateTable,
                               AddField, AlterField, DropField, DropTable, CreateIndex, DropIndex>;

template <typename... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

/// Calls `visit_part` with every expression, and `visit_query` with every query, of which the expression directly
/// consists.
template <typename VisitPart, typename VisitQuery>
void visit_parts(const Expression& expression, VisitPart visit_part, VisitQuery visit_query) {
  const auto visit_all = [&](const auto&... parts) { (visit_part(*parts), ...); };
  std::visit(
      Overloaded{[](const Literal&) {}, [](const ColumnName&) {}, [&](const Unary& node) { visit_all(node.operand); },
                 [&](const Binary& node) { visit_all(node.left, node.right); },
                 [&](const Between& node) { visit_all(node.value, node.low, node.high); },
                 [&](const Like& node) { visit_all(node.value, node.pattern); },
                 [&](const NullTest& node) { visit_all(node.value); },
                 [&](const InList& node) {
                   visit_all(node.value);
                   for (const ExpressionPtr& item : node.items) visit_part(*item);
                 },
                 [&](const InSelect& node) {
                   visit_all(node.value);
                   visit_query(*node.query);
                 },
                 [&](const Quantified& node) {
                   visit_all(node.value);
                   visit_query(*node.query);
                 },
                 [&](const Exists& node) { visit_query(*node.query); },
                 [&](const ScalarSelect& node) { visit_query(*node.query); },
                 [&](const Call& node) {
                   for (const ExpressionPtr& argument : node.arguments) visit_part(*argument);
                 }},
      expression.node);
}

/// The expression itself or, where it is an alias, what the alias stands for.
const Expression& behind_alias(const Expression& expression) noexcept;

/// The literal that the expression is, seen through aliases; null where it is none.
const Literal* as_literal(const Expression& expression) noexcept;

/// The value of Yes, No and Off where nothing has that name. The parser itself knows the word ON.
std::optional<bool> constant_of(const ColumnName& name) noexcept;

/// True where the expression holds no column and no subselect: its value is the same for every row.
bool is_same_for_all_rows(const Expression& expression) noexcept;

/// True where an aggregate in the expression names no column: count(*), sum(1).
bool has_aggregate_without_column(const Expression& expression) noexcept;

/// True where the expression holds a subselect.
bool has_subselect(const Expression& expression) noexcept;

/// True where the form of the expression is a condition: a comparison, a logical operator, LIKE, IN, IsNull(…), ….
bool is_predicate(const Expression& expression) noexcept;

constexpr bool is_comparison(BinaryOperator op) noexcept {
  return op >= BinaryOperator::Equal && op <= BinaryOperator::GreaterOrEqual;
}
constexpr bool is_logical(BinaryOperator op) noexcept { return op <= BinaryOperator::And; }

/// True where both surely give the same value for a row. False for expressions with subselects, and possibly for very
/// large ones.
bool same_expression(const Expression& left, const Expression& right) noexcept;

}  // namespace engine::embedded::jet_sql
