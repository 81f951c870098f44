// The catalogue as it lies in the file: three tables whose names hold a ".", which no name of a user's table can, and
// the file's user version, which counts the changes of layout. A definition is never changed in place: who holds one
// keeps it as it was.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/engine/embedded/catalogue.h"
#include "database/engine/embedded/connection.h"

namespace engine::embedded {

/// Marks the file as ours; the last byte counts the layouts of the catalogue.
inline constexpr std::int64_t catalogue_application_id = 0x4a445301;

struct StoredTable {
  std::int64_t id = 0;
  TableDefinition definition;
};

using TablePointer = std::shared_ptr<const StoredTable>;

/// A table as the list of tables knows it.
struct TableName {
  std::int64_t id = 0;
  std::string name;
};

class StoredCatalogue : public Catalogue {
 public:
  /// Creates the catalogue's own tables in a new file.
  static void create(Connection& connection);

  /// Reads the tables' names; 3343 where the file has no catalogue. A table's fields and indexes are read when it is
  /// first asked for. The connection must outlive the object.
  explicit StoredCatalogue(Connection& connection);
  /// Of a file that is not there yet.
  StoredCatalogue() = default;

  const TableDefinition* find_table(std::string_view name) const override;
  /// Null where there is none.
  TablePointer find(std::string_view name) const;
  TablePointer find(std::int64_t id) const;
  /// In the order of appending.
  const std::vector<TableName>& tables() const noexcept { return tables_; }
  /// The file's count of layout changes when this was read or last written.
  std::int64_t version() const noexcept { return version_; }

  // Changes, in the file and here. The caller runs them in a transaction and drops the object where that is rolled
  // back.
  std::int64_t insert_table(const TableDefinition& definition);
  void erase_table(std::int64_t id);
  /// Properties of the table itself, its name included.
  void update_table(std::int64_t id, const TableDefinition& definition);
  void insert_field(std::int64_t id, const FieldDefinition& field);
  /// The new definition may have another name; indexes follow.
  void update_field(std::int64_t id, std::string_view name, const FieldDefinition& field);
  void erase_field(std::int64_t id, std::string_view name);
  void insert_index(std::int64_t id, const IndexDefinition& index);
  void erase_index(std::int64_t id, std::string_view name);
  /// Counts one change, for other connections to see.
  void count_change();

 private:
  TablePointer load(std::int64_t id) const;
  void add(std::int64_t id, const std::string& name);
  /// Where the table stands in tables_; 3420 where it does not.
  std::size_t position(std::int64_t id) const;
  TableDefinition copy_of(std::int64_t id) const;
  void replace(std::int64_t id, TableDefinition definition);
  void write_field(std::int64_t id, const FieldDefinition& field);
  void write_index(std::int64_t id, const IndexDefinition& index);

  Connection* connection_ = nullptr;
  std::vector<TableName> tables_;
  std::unordered_map<std::string, std::int64_t> ids_;  ///< by name in lower case
  mutable std::unordered_map<std::int64_t, TablePointer> loaded_;
  std::int64_t version_ = 0;
};

}  // namespace engine::embedded
