// A change of the catalogue, made in the catalogue tables of the file and in a copy of the catalogue that nobody else
// uses yet.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/engine/embedded/stored_catalogue.h"

namespace engine::embedded {

class CatalogueChange {
 public:
  CatalogueChange(Connection& connection, StoredCatalogue& copy) : connection_(connection), catalogue_(copy) {}

  /// Creates the catalogue's own tables in a new file.
  static void create_tables(Connection& connection);
  /// Draws a new stamp, by which other connections see that the layout has changed.
  void draw_stamp();

  /// Returns the table's identity.
  std::int64_t insert_table(const TableDefinition& definition);
  void erase_table(std::int64_t id);
  /// Changes properties of the table itself, its name included.
  void update_table(std::int64_t id, const TableDefinition& definition);
  void insert_field(std::int64_t id, const FieldDefinition& field);
  /// The new definition may have another name; indexes follow. Raises 3265 where there is no such field.
  void update_field(std::int64_t id, std::string_view name, const FieldDefinition& field);
  void erase_field(std::int64_t id, std::string_view name);
  void insert_index(std::int64_t id, const IndexDefinition& index);
  void erase_index(std::int64_t id, std::string_view name);

 private:
  /// Raises 3420 where the table is gone.
  TableDefinition copy_of(std::int64_t id) const;
  /// Returns its identity.
  std::int64_t write_field(std::int64_t id, const FieldDefinition& field);
  void write_index(std::int64_t id, const IndexDefinition& index);

  Connection& connection_;
  StoredCatalogue& catalogue_;
};

}  // namespace engine::embedded
