// Writes INSERT.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/stored_row_writer.h"

namespace engine::embedded::jet_sql {

class InsertWriter {
 public:
  InsertWriter(SqlText& sql, QueryWriter& queries, StoredRowWriter& stored, const TableDefinition& changed)
      : sql_(sql), queries_(queries), stored_(stored), table_(changed) {}

  /// Raises 3127 for an unknown field, 3063 for one that is named twice, 3346 where values and fields differ in number.
  void insert(const InsertStatement& statement);

 private:
  /// A field that an INSERT writes, with what it gets: a value of the list, a column of the query, or the default.
  struct Destination {
    const FieldDefinition* field = nullptr;
    std::size_t position = 0;
    std::string default_text;
    bool is_default = false;
  };

  std::vector<Destination> destinations(const InsertStatement& statement) const;
  std::vector<std::string> field_names(const InsertStatement& statement) const;
  void add_defaults(std::vector<Destination>& fields) const;
  void head(const std::vector<Destination>& fields, bool append);
  void row_identity();
  void default_of(const Destination& destination, bool append);
  template <typename Write>
  void number_or_value(const FieldDefinition& field, Write write_value);
  void values(const InsertStatement& statement, const std::vector<Destination>& fields);
  void append(const QueryTree& query, const std::vector<Destination>& fields);
  void append_plain(const QueryTree& query, const std::vector<Destination>& fields);
  template <typename Write>
  void append_columns(const QueryTree& query, const std::vector<Destination>& fields, Write write_column);
  template <typename Write>
  void append_filters(const QueryTree& query, const std::vector<Destination>& fields, std::string_view before,
                      Write write_column);

  SqlText& sql_;
  QueryWriter& queries_;
  StoredRowWriter& stored_;
  const TableDefinition& table_;
};

}  // namespace engine::embedded::jet_sql
