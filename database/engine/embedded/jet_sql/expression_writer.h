// Writes a bound expression as a value of SQLite. Every operation stands in parentheses; Yes/No is -1 or 0.
#pragma once

#include <cstddef>
#include <string_view>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/sql_text.h"

namespace engine::embedded::jet_sql {

class ConditionWriter;
class QueryWriter;

class ExpressionWriter {
 public:
  /// `conditions` and `queries` write the conditions and queries inside an expression.
  ExpressionWriter(SqlText& sql, ConditionWriter& conditions, QueryWriter& queries)
      : sql_(sql), conditions_(conditions), queries_(queries) {}

  void value(const Expression& expression);
  void text(const Expression& expression);
  /// Writes the value, with its collation where it is a text.
  void collated(const Expression& expression);
  /// Writes the value as it is compared with one of the other type: a number beside a Single is rounded to a Single.
  void operand(const Expression& expression, const ValueType& other);
  void column(const Source& source, std::size_t index);
  /// Writes the expression of a column. In a column of a crosstab, aggregates count only the rows of its cell.
  void output_value(const OutputColumn& shown);
  /// Writes as a text what `write_value` writes, a value of this type.
  template <typename Write>
  void as_text(const ValueType& type, Write write_value) {
    const std::string_view function = type.kind == Kind::Date ? "jet_date_text(" : "jet_text(";
    if (type.is_text() || type.kind == Kind::Null) return write_value();
    sql_.write(function).write(type.kind == Kind::Single ? "jet_widen(" : "(");
    write_value();
    sql_.write("))");
  }
  /// Writes a query inside an expression. Its aggregates are its own.
  void subselect(const QueryTree& inner);

 private:
  void number(const Expression& expression);
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

  SqlText& sql_;
  ConditionWriter& conditions_;
  QueryWriter& queries_;
  /// The cell of a crosstab that is being written; null outside of cells.
  const OutputColumn* cell_ = nullptr;
};

}  // namespace engine::embedded::jet_sql
