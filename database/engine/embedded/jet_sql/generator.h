// Writes a bound query as SQLite text. Every operation is put in parentheses, every name is quoted, every source has a
// name of its own; texts compare under the collation JET, Yes/No is -1 or 0, which SQLite's own conditions are not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"

namespace engine::embedded::jet_sql {

class Generator {
 public:
  /// With the row number of `rows_of`, a source of the query's one SELECT, as one more column, the last.
  void query(const QueryTree& query, const Source* rows_of = nullptr);

  /// The headings of a crosstab: one column, in their order.
  void headings(const Select& select);
  /// The columns of the query's one SELECT for the row of `rows_of`, its one source, whose rowid is the parameter.
  void one_row(const QueryTree& query, const Source& rows_of);

  /// The text written so far.
  std::string take() { return std::move(out_); }

 protected:
  // Text. Raises 3360 where it gets too long.
  Generator& write(std::string_view text);
  void name(std::string_view name);
  void text_literal(std::string_view text);
  void number_literal(double number);
  void whole_literal(std::int64_t number);
  template <typename Range, typename Write>
  void list(const Range& range, std::string_view separator, Write write_item) {
    bool first = true;
    for (const auto& item : range) {
      if (!std::exchange(first, false)) write(separator);
      write_item(item);
    }
  }

  // Expressions (generator_expression.cpp)
  void value(const Expression& expression);
  void column(const Source& source, std::size_t index);
  /// What `write_value` writes, a value of the type, as a text.
  template <typename Write>
  void as_text(const ValueType& type, Write write_value) {
    const std::string_view function = type.kind == Kind::Date ? "jet_date_text(" : "jet_text(";
    if (type.is_text() || type.kind == Kind::Null) return write_value();
    write(function).write(type.kind == Kind::Single ? "jet_widen(" : "(");
    write_value();
    write("))");
  }

  // Conditions (generator_condition.cpp)
  void condition(const Expression& expression);

  // Queries (generator_query.cpp)
  void from(const std::vector<TableReferencePtr>& references);
  void reference(const TableReference& reference);
  void table(const Source& source);
  void output(const OutputColumn& column);
  void order_by(const QueryTree& query, bool by_position);
  /// One SELECT with TOP, its rows in their order whatever is made of them.
  void ranked(const Select& select, const QueryTree& query, const Source* rows_of);
  void row_id(const Source& source);

 private:
  // Expressions
  void number(const Expression& expression);
  void text(const Expression& expression);
  /// The value beside one of the other type: a number beside a Single is rounded to one.
  void operand(const Expression& expression, const ValueType& other);
  void literal(const Literal& literal);
  void binary(const Expression& expression, const Binary& binary);
  void add(const ValueType& type, const Binary& binary);
  void operation(const ValueType& type, std::string_view sqlite_operator, const Binary& binary);
  void function(std::string_view sqlite_name, const Binary& binary);
  void divide(const Binary& binary);
  void whole_divide(const Binary& binary);
  void call(const Call& call);
  void aggregate(const Call& call);
  void of_cell(const OutputColumn& cell);
  void plain_call(const Call& call);
  void argument(const Expression& expression, char letter);
  void case_call(const Call& call);
  void choose_call(const Call& call);
  void nz_call(const Call& call);
  void scalar(const ScalarSelect& scalar);
  /// A query inside an expression: its aggregates are its own.
  void subselect(const QueryTree& inner);

  // Conditions
  void predicate(const Expression& expression);
  void logical(const Binary& binary);
  void comparison(const Binary& binary);
  bool truth_comparison(const Binary& binary, const Expression& tested, const Expression& truth);
  void between(const Between& between);
  void bounds(const Between& between);
  void in_list(const InList& list);
  void in_select(const InSelect& in);
  void quantified(const Quantified& quantified);
  void like(const Like& like);
  /// The value, and its collation where it is a text.
  void collated(const Expression& expression);

  // Queries
  void select(const Select& select, const QueryTree& query, const Source* rows_of);
  void rank(const QueryTree& query);
  void union_member(const Select& select, const QueryTree& query);
  void tail(const Select& select);
  void rows(const Select& select);
  void output_at(const Select& select, std::size_t position, const ValueType& type, bool collate);
  void output_as(const OutputColumn& column, const ValueType& type, bool collate);
  /// What rows are grouped or sorted by.
  void sort_key(const Expression& expression);
  void order_term(const QueryTree& query, const OrderItem& item, bool by_position);

  std::string out_;
  /// The cell of a crosstab that is being written.
  const OutputColumn* cell_ = nullptr;
};

}  // namespace engine::embedded::jet_sql
