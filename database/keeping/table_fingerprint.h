// What a table holds, as two numbers: how many rows, and a checksum of their values as the object model gives them.
// Both say nothing of how the rows are stored or in which order, so that tables of different files, engines and kinds
// of storage can be compared. Two tables of the same fields and rows have the same fingerprint; that two others have it
// by chance is as good as impossible (64 bits).
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
  std::uint64_t checksum = 0;  ///< of the fields' names, without regard to case, and of all values
  bool operator==(const TableFingerprint&) const = default;
};

/// One value after the other, row after row: what the fingerprint of a table is worked out by.
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

/// Reads the table once, row by row, in the memory of a row. 3059 where the progress, which may be null, is
/// interrupted; else what the engine raises.
TableFingerprint fingerprint_of_table(engine::Database& database, std::string_view table, Progress* progress = nullptr);

/// Of all tables, in the order of appending. The progress goes on from as many tables as were read before.
std::vector<TableFingerprint> fingerprints(engine::Database& database, Progress* progress = nullptr,
                                           std::int32_t tables_before = 0);

/// The names of the tables that differ, or that one side lacks.
std::vector<std::string> differing_tables(const std::vector<TableFingerprint>& left,
                                          const std::vector<TableFingerprint>& right);

/// Raises 3343, with the names of the tables that differ.
void require_same_content(const std::vector<TableFingerprint>& source, const std::vector<TableFingerprint>& copy);

/// Rows of all tables.
std::int64_t row_count(const std::vector<TableFingerprint>& tables);

}  // namespace database::keeping
