// Databases of old layouts, built from the scripts of tests/data/layouts, and their content as lines of text.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "tests/database/database_test.h"

namespace database::testing {

/// The minor versions that have scripts.
std::span<const std::int16_t> old_versions();

class OldLayout : public DatabaseTest {
 protected:
  /// Makes a database of that layout, without a password, in a file of its own; returns its path.
  std::string old_database(std::int16_t minor_version);
  /// Reads the version record and upgrades, as the index processing does; 1 if the record was written.
  std::int16_t upgrade(const std::string& file) const;
  std::int16_t stored_version(const std::string& file) const;
};

/// "4.40"
std::string version_text(std::int16_t minor_version);

/// Every row of every table as "table: field=value …", without fields that are Null.
std::vector<std::string> row_lines(engine::Database& database);

/// The differences of a layout from another one: "table missing", "table.field default '0' instead of ''" …
std::set<std::string> layout_differences(engine::Database& database, engine::Database& model);

}  // namespace database::testing
