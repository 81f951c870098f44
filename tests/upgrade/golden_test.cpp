// Compares every old layout, once upgraded, with a new database: where the layouts differ, and what has become of the
// rows.
#include <algorithm>
#include <fstream>
#include <map>
#include <vector>

#include "database/version_record.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

/// What is found after the upgrade, with the versions in which it is found.
using Findings = std::map<std::string, std::set<std::int16_t>>;

/// "4.0-4.8 4.57-": ranges of the versions that have scripts. A range up to the newest is left open, so that the next
/// script changes no line.
std::string ranges(const std::set<std::int16_t>& found) {
  std::string text;
  const auto all = old_versions();
  for (auto from = all.begin(); from != all.end();) {
    const auto end = std::find_if(from, all.end(), [&](std::int16_t version) { return !found.contains(version); });
    if (end == from) {
      ++from;
      continue;
    }
    text += (text.empty() ? "" : " ") + version_text(*from);
    if (end == all.end()) {
      text += "-";
    } else if (end - from > 1) {
      text += "-" + version_text(*(end - 1));
    }
    from = end;
  }
  return text;
}

std::set<std::string> lines_of(const Findings& findings) {
  std::set<std::string> lines;
  for (const auto& [text, versions] : findings) lines.insert("[" + ranges(versions) + "] " + text);
  return lines;
}

/// The lines of a file, which are patterns with "*". A line that begins with "#" gives the reason for the lines below
/// it.
std::vector<std::string> expected_patterns(const std::string& name) {
  std::vector<std::string> patterns;
  std::ifstream file(std::string(TEST_DATA_DIR) + "/layouts/" + name);
  EXPECT_TRUE(file) << name;
  bool has_reason = false;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with("#")) has_reason = true;
    if (line.empty() || line.starts_with("#")) continue;
    EXPECT_TRUE(has_reason) << "no reason given: " << line;
    patterns.push_back(line);
  }
  return patterns;
}

/// Expects that each line has a pattern, and each pattern a line.
void expect_listed(const std::set<std::string>& lines, const std::string& file) {
  const std::vector<std::string> patterns = expected_patterns(file);
  std::set<std::string> unused(patterns.begin(), patterns.end());
  EXPECT_EQ(unused.size(), patterns.size()) << file << " says something twice";
  for (const std::string& line : lines) {
    bool listed = false;
    for (const std::string& pattern : patterns) {
      if (!support::matches_pattern(line, pattern)) continue;
      listed = true;
      unused.erase(pattern);
    }
    EXPECT_TRUE(listed) << file << " lacks:\n" << line;
  }
  for (const std::string& pattern : unused) ADD_FAILURE() << file << " expects in vain:\n" << pattern;
}

TEST_F(OldLayout, ComesOutAsANewDatabaseButForTheListedDifferences) {
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
  Findings differences, rows;
  const Opened model = open(patient_database());
  for (const std::int16_t version : old_versions()) {
    const std::string file = old_database(version);
    ASSERT_EQ(upgrade(file), 1) << version_text(version);
    EXPECT_EQ(stored_version(file), current_minor_version) << version_text(version);
    const Opened upgraded = open(file);
    for (const std::string& line : layout_differences(*upgraded.database, *model.database)) {
      differences[line].insert(version);
    }
    for (const std::string& line : row_lines(*upgraded.database)) rows[line].insert(version);
  }
  expect_listed(lines_of(differences), "differences.txt");
  expect_listed(lines_of(rows), "rows.txt");
}

}  // namespace
}  // namespace database::testing
