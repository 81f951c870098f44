// Writes the statements that change the rows of a table as SQLite text.
#pragma once

#include <string>

#include "database/engine/embedded/jet_sql/insert_writer.h"
#include "database/engine/embedded/jet_sql/stored_row_writer.h"
#include "database/engine/embedded/jet_sql/update_writer.h"

namespace engine::embedded::jet_sql {

class ChangeWriter {
 public:
  explicit ChangeWriter(const TableDefinition& changed) : table_(changed) {}
  ChangeWriter(const ChangeWriter&) = delete;
  ChangeWriter& operator=(const ChangeWriter&) = delete;

  void insert(const InsertStatement& statement) { InsertWriter(sql_, queries_, stored_, table_).insert(statement); }
  void update(const UpdateStatement& statement, const Source& target) {
    UpdateWriter(sql_, queries_, stored_, table_).update(statement, target);
  }
  void remove(const DeleteStatement& statement, const Source& target) {
    UpdateWriter(sql_, queries_, stored_, table_).remove(statement, target);
  }
  /// Writes the value, converted to the field's type. Refuses neither Null nor an empty text.
  void default_value(const Expression& expression, const FieldDefinition& field) {
    stored_.convert(field, {expression.type, origin_of(expression)}, StoreMode::Default,
                    [&] { queries_.expressions().value(expression); });
  }

  /// What was written so far.
  std::string take() { return sql_.take(); }

 private:
  const TableDefinition& table_;
  SqlText sql_;
  QueryWriter queries_{sql_};
  StoredRowWriter stored_{sql_, queries_, table_};
};

}  // namespace engine::embedded::jet_sql
