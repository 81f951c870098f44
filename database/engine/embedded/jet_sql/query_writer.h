// Writes a bound query as SQLite text. Every name is quoted, and every source has a name of its own.
#pragma once

#include <cstddef>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/condition_writer.h"
#include "database/engine/embedded/jet_sql/expression_writer.h"
#include "database/engine/embedded/jet_sql/sql_text.h"

namespace engine::embedded::jet_sql {

class QueryWriter {
 public:
  explicit QueryWriter(SqlText& sql)
      : sql_(sql), expressions_(sql, conditions_, *this), conditions_(sql, expressions_) {}
  QueryWriter(const QueryWriter&) = delete;
  QueryWriter& operator=(const QueryWriter&) = delete;

  ExpressionWriter& expressions() noexcept { return expressions_; }
  ConditionWriter& conditions() noexcept { return conditions_; }

  /// Writes the query. With `rows_of`, a source of its only SELECT, the last column is that source's row number.
  void query(const QueryTree& query, const Source* rows_of = nullptr);
  /// Writes a query for the headings of a crosstab: one column, in their order.
  void headings(const Select& select);
  /// Writes the columns of the query's only SELECT for one row of `rows_of`, its only source. The parameter is the
  /// row's rowid.
  void one_row(const QueryTree& query, const Source& rows_of);
  /// Writes one SELECT with TOP. Its rows keep their order, whatever is made of them.
  void ranked(const Select& select, const QueryTree& query, const Source* rows_of);

  // Parts of a statement
  void from(const std::vector<TableReferencePtr>& references);
  void reference(const TableReference& reference);
  void table(const Source& source);
  void output(const OutputColumn& column);
  void row_id(const Source& source);

 private:
  void select(const Select& select, const QueryTree& query, const Source* rows_of);
  void rank(const QueryTree& query);
  void union_member(const Select& select, const QueryTree& query);
  void tail(const Select& select);
  void rows(const Select& select);
  void output_at(const Select& select, std::size_t position, const ValueType& type, bool collate);
  void output_as(const OutputColumn& column, const ValueType& type, bool collate);
  void order_by(const QueryTree& query, bool by_position);
  /// Writes an expression by which rows are grouped or sorted.
  void sort_key(const Expression& expression);
  void order_term(const QueryTree& query, const OrderItem& item, bool by_position);

  SqlText& sql_;
  ExpressionWriter expressions_;
  ConditionWriter conditions_;
};

}  // namespace engine::embedded::jet_sql
