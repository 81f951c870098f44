// The content of a table in two numbers: how many rows it has, and a checksum of their values as the object model gives
// them. Neither depends on how the rows are stored or on their order, so tables of different files, engines and kinds
// of storage can be compared. Two tables with the same fields and rows have the same fingerprint. It is practically
// impossible that different tables have the same one by chance (64 bits).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"

namespace database::keeping {

struct TableFingerprint {
  std::string table;
  std::int64_t rows = 0;
  std::uint64_t checksum = 0;  ///< of the fields' names, in which case does not count, and of all values
  bool operator==(const TableFingerprint&) const = default;
};

/// Computes the fingerprint of a table. Takes one value after the other, row after row.
class FingerprintWriter {
 public:
  void add_field(std::string_view name);
  void add_value(const engine::Value& value);
  void end_row();
  std::int64_t rows() const noexcept { return rows_; }
  std::uint64_t checksum() const noexcept;

 private:
  void add_text(std::string_view text);
  void add_word(std::uint64_t word) noexcept;

  std::uint64_t fields_ = 0;
  std::uint64_t row_ = 0;
  std::uint64_t sum_ = 0;
  std::int64_t rows_ = 0;
};

/// Reads the table once, row by row, with the memory of one row. Raises 3059 where the progress, which may be null, is
/// interrupted; else what the engine raises.
TableFingerprint fingerprint_of_table(engine::Database& database, std::string_view table, Progress* progress = nullptr);

/// The fingerprints of all tables, in the order of appending. The progress counts on from `tables_before` tables.
std::vector<TableFingerprint> fingerprints(engine::Database& database, Progress* progress = nullptr,
                                           std::int32_t tables_before = 0);

/// The names of the tables that differ, or that one side lacks.
std::vector<std::string> differing_tables(const std::vector<TableFingerprint>& left,
                                          const std::vector<TableFingerprint>& right);

/// Raises 3343 with the names of the tables that differ.
void require_same_content(const std::vector<TableFingerprint>& source, const std::vector<TableFingerprint>& copy);

/// The number of rows in all tables.
std::int64_t row_count(const std::vector<TableFingerprint>& tables);

}  // namespace database::keeping
