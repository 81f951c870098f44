// Writes a bound expression as a condition of SQLite, which is true, false or Null. Texts are compared under the
// collation JET.
#pragma once

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/sql_text.h"

namespace engine::embedded::jet_sql {

class ExpressionWriter;

class ConditionWriter {
 public:
  ConditionWriter(SqlText& sql, ExpressionWriter& expressions) : sql_(sql), expressions_(expressions) {}

  void condition(const Expression& expression);

 private:
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

  SqlText& sql_;
  ExpressionWriter& expressions_;
};

}  // namespace engine::embedded::jet_sql
