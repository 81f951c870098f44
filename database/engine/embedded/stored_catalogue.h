// The catalogue of a file as it was at one moment. It is stored in three tables whose names hold a ".", which no name
// of a user's table can hold. The file's user version is its stamp; each change of the layout draws a new one. A
// catalogue that is in use never changes: a change makes a copy, which shares the definitions that stay.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/lru_cache.h"

namespace engine::embedded {

/// Marks the file as ours. The last byte counts the layouts of the catalogue.
inline constexpr std::int64_t catalogue_application_id = 0x4a445301;

struct StoredTable {
  std::int64_t id = 0;
  TableDefinition definition;
};

using TablePointer = std::shared_ptr<const StoredTable>;
using ProgramPointer = std::shared_ptr<const jet_sql::Program>;

class StoredCatalogue : public Catalogue {
 public:
  /// The catalogue of a file without tables.
  StoredCatalogue() = default;
  /// Reads the file's catalogue, in a transaction. Raises 3343 where the file has none.
  explicit StoredCatalogue(Connection& connection);
  StoredCatalogue(const StoredCatalogue& other)
      : Catalogue(other), tables_(other.tables_), positions_(other.positions_), stamp_(other.stamp_) {}
  StoredCatalogue& operator=(const StoredCatalogue&) = delete;

  const TableDefinition* find_table(std::string_view name) const override;
  /// Null where there is no such table.
  TablePointer find(std::string_view name) const;
  TablePointer find(std::int64_t id) const;
  /// The tables in the order of appending.
  const std::vector<TablePointer>& tables() const noexcept { return tables_; }
  std::int64_t stamp() const noexcept { return stamp_; }

  /// Compiles the statement, or takes it from memory where it was compiled against this catalogue before.
  ProgramPointer compile(std::string_view sql) const;

  void set_stamp(std::int64_t stamp) noexcept { stamp_ = stamp; }
  void add(StoredTable table);
  void replace(std::int64_t id, TableDefinition definition);
  void erase(std::int64_t id);

 private:
  void read(Connection& connection);

  std::vector<TablePointer> tables_;
  std::unordered_map<std::string, std::size_t> positions_;  ///< by name in lower case
  std::int64_t stamp_ = 0;
  mutable LruCache<ProgramPointer> programs_{64};
};

/// The catalogues that this process has read, so that a file that is opened again is not read again. They are found by
/// the stamp and the file's identity, which is its path and its salt.
namespace known_catalogues {

/// Null where it is not known.
std::shared_ptr<const StoredCatalogue> find(std::string_view file, std::int64_t stamp);
void keep(std::string_view file, const std::shared_ptr<const StoredCatalogue>& catalogue);

}  // namespace known_catalogues

/// The SQL that every recordset of a table needs.
struct TableStatements {
  TablePointer table;
  std::string defaults;  ///< SELECT: one row with the default of each field
  std::string insert;    ///< parameters: the row's identity, if it can be named, and the fields
  /// SQLite text that raises where a row, under the name jet_sql::rule_row, breaches a rule. One for each field, and
  /// the table's at the end; empty where there is no rule.
  std::vector<std::string> rules;
};

TableStatements write_statements(const TablePointer& table);

}  // namespace engine::embedded
