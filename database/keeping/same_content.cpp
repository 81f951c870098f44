#include "database/keeping/same_content.h"

#include "support/error.h"

namespace database::keeping {

void require_same_content(const std::vector<TableFingerprint>& source, const std::vector<TableFingerprint>& copy) {
  std::string names;
  for (const std::string& table : differing_tables(source, copy)) names.append(names.empty() ? "" : ", ").append(table);
  if (names.empty()) return;
  throw support::RuntimeError(support::error_number::unknown_format,
                              "What was written is not what was read, and was given up. Tables: " + names);
}

std::int64_t row_count(const std::vector<TableFingerprint>& tables) {
  std::int64_t rows = 0;
  for (const TableFingerprint& table : tables) rows += table.rows;
  return rows;
}

}  // namespace database::keeping
