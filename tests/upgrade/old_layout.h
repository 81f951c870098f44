// Databases of old layouts, built from the scripts of tests/data/layouts, and what they hold as lines of text.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "tests/database/database_test.h"

namespace database::testing {

/// The minor versions that there are scripts for.
std::span<const std::int16_t> old_versions();

class OldLayout : public DatabaseTest {
 protected:
  /// A database of that layout, without password, in a file of its own; returns its path.
  std::string old_database(std::int16_t minor_version);
  /// Reads the record and upgrades, as the index processing does; 1 where the record was written.
  std::int16_t upgrade(const std::string& file) const;
  std::int16_t stored_version(const std::string& file) const;
};

/// "4.40"
std::string version_text(std::int16_t minor_version);

/// Every row of every table: "table: field=value …", fields that are Null left out.
std::vector<std::string> row_lines(engine::Database& database);

/// How a layout differs from another one: "table missing", "table.field default '0' instead of ''" …
std::set<std::string> layout_differences(engine::Database& database, engine::Database& model);

}  // namespace database::testing
