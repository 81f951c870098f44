// Writes UPDATE and DELETE.
#pragma once

#include <vector>

#include "database/engine/embedded/jet_sql/stored_row_writer.h"

namespace engine::embedded::jet_sql {

class UpdateWriter {
 public:
  UpdateWriter(SqlText& sql, QueryWriter& queries, StoredRowWriter& stored, const TableDefinition& changed)
      : sql_(sql), queries_(queries), stored_(stored), table_(changed) {}

  /// Raises 3113 for an AutoNumber.
  void update(const UpdateStatement& statement, const Source& target);
  void remove(const DeleteStatement& statement, const Source& target);

 private:
  void assignments(const UpdateStatement& statement);
  void assigned(const Assignment& assignment);
  void checked_row(const UpdateStatement& statement, const std::vector<const Rule*>& rules);
  std::vector<const Rule*> rules_of(const UpdateStatement& statement) const;
  void joined_tables(const TableReference& reference, const Source& target);
  void joined_where(const UpdateStatement& statement);
  bool may_violate_index(const UpdateStatement& statement) const;

  SqlText& sql_;
  QueryWriter& queries_;
  StoredRowWriter& stored_;
  const TableDefinition& table_;
  /// For an UPDATE over a join: the other tables, and the conditions of the joins.
  std::vector<const TableReference*> others_;
  std::vector<const Expression*> conditions_;
};

}  // namespace engine::embedded::jet_sql
