#include "tests/upgrade/old_layout.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "database/layout_json.h"
#include "database/upgrade/ladder.h"
#include "database/version_record.h"
#include "support/encoding.h"
#include "support/text.h"
#include "tests/support/file_content.h"

namespace database::testing {
namespace {

constexpr std::int16_t versions[] = {0, 2, 8, 18, 24, 27, 33, 40, 44, 45, 53, 57, 58, 59};

std::string read_script(std::int16_t version) {
  const std::string path = std::string(TEST_DATA_DIR) + "/layouts/" + version_text(version) + ".sql";
  const auto content = support::testing::content_of(path);
  EXPECT_TRUE(content) << path;
  std::string text = content.value_or("");
  std::erase(text, '\r');
  return text;
}

/// "--! glucose: Comment 7 2 empty, ID 0 16" gives place and attributes of fields; "empty" means that an empty text is
/// allowed, "blank" that the default is a blank.
void set_properties(engine::Database& database, const std::string& line) {
  const std::size_t colon = line.find(':');
  const auto table = database.table_defs().item(line.substr(4, colon - 4));
  std::istringstream fields(line.substr(colon + 1));
  for (std::string text; std::getline(fields, text, ',');) {
    std::istringstream words(text);
    std::string name;
    std::int16_t place = 0;
    std::int32_t attributes = 0;
    words >> name >> place >> attributes;
    const auto field = table->fields().item(name);
    field->set_ordinal_position(place);
    field->set_attributes(attributes);
    for (std::string word; words >> word;) {
      if (word == "empty") field->set_allow_zero_length(true);
      if (word == "blank") field->set_default_value(" ");
    }
  }
}

/// Runs the script of the layout before, which the script's first line names, then the script itself. The oldest names
/// none.
void run_scripts(engine::Database& database, std::int16_t version) {
  const std::string script = read_script(version);
  const std::string_view mark = ", after 4.";
  const std::size_t after = script.find(mark);
  if (after < script.find('\n')) {
    run_scripts(database, static_cast<std::int16_t>(std::stoi(script.substr(after + mark.size()))));
  }
  std::istringstream lines(script);
  std::string statement;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("--!")) set_properties(database, line);
    if (line.starts_with("--") || line.empty()) continue;
    statement += line + "\n";
    if (line.back() != ';') continue;
    database.execute(statement);
    statement.clear();
  }
}

/// The value in short form: a day without its midnight, a time without its day, a text in one line.
std::string short_text(const engine::Value& value) {
  std::string text = text_of(value);
  support::replace(text, "\n", "\\");
  if (!std::holds_alternative<engine::Date>(value)) return text;
  support::replace(text, " 00:00:00", "");
  support::replace(text, "1899-12-30 ", "");
  return text;
}

std::string row_line(const engine::Recordset& row) {
  std::string line;
  for (std::int32_t i = 0; i < row.field_count(); ++i) {
    const engine::Value value = row.value(i);
    if (!engine::is_null(value)) line += " " + row.field_name(i) + "=" + short_text(value);
  }
  return line;
}

using Properties = std::map<std::string, std::string>;

Properties properties_of(const engine::Field& field) {
  return {{"type", std::string(type_word(field.type()))},     {"size", std::to_string(field.size())},
          {"attributes", std::to_string(field.attributes())}, {"default", "'" + field.default_value() + "'"},
          {"required", field.required() ? "yes" : "no"},      {"empty", field.allow_zero_length() ? "yes" : "no"},
          {"place", std::to_string(field.ordinal_position())}};
}

template <typename Collection>
std::vector<std::string> names_of(Collection& collection) {
  std::vector<std::string> names;
  for (std::int32_t i = 0; i < collection.count(); ++i) {
    names.push_back(support::to_lower(collection.item(i)->name()));
  }
  return names;
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
  return std::ranges::find(names, name) != names.end();
}

/// Reports what only one side has, and calls `compare` with the names that both have, in the model's order.
template <typename Collection, typename Compare>
void compare_names(Collection& ours, Collection& model, const std::string& prefix, std::set<std::string>& differences,
                   Compare compare) {
  const auto our_names = names_of(ours), model_names = names_of(model);
  for (const std::string& name : our_names) {
    if (!contains(model_names, name)) differences.insert(prefix + name + " not in a new database");
  }
  std::vector<std::string> common;
  for (const std::string& name : model_names) {
    if (!contains(our_names, name)) {
      differences.insert(prefix + name + " missing");
    } else {
      compare(name);
    }
  }
}

void compare_fields(engine::TableDef& ours, engine::TableDef& model, const std::string& table,
                    std::set<std::string>& differences) {
  compare_names(ours.fields(), model.fields(), table + ".", differences, [&](const std::string& name) {
    const Properties our_properties = properties_of(*ours.fields().item(name));
    for (const auto& [property, expected] : properties_of(*model.fields().item(name))) {
      const std::string& found = our_properties.at(property);
      if (found == expected) continue;
      differences.insert(table + "." + name + " " + property + " " + found + " instead of " + expected);
    }
  });
  compare_names(ours.indexes(), model.indexes(), table + " index ", differences, [](const std::string&) {});
}

}  // namespace

std::span<const std::int16_t> old_versions() { return versions; }

std::string version_text(std::int16_t minor_version) { return "4." + std::to_string(minor_version); }

std::string OldLayout::old_database(std::int16_t minor_version) {
  // Each layout is built once and then copied.
  static std::map<std::int16_t, std::string> contents;
  const std::string file = path(version_text(minor_version) + ".das");
  std::string& content = contents[minor_version];
  if (content.empty()) {
    const auto engine = engine::open_engine("DAO.DBEngine.36");
    const auto database = engine->create_database(file, engine::locale_general, engine::version_30);
    engine::Transaction transaction{*database};
    run_scripts(*database, minor_version);
    transaction.commit();
    database->close();
    content = read_file(file);
  } else {
    write_file(file, content);
  }
  return file;
}

std::int16_t OldLayout::upgrade(const std::string& file) const {
  VersionRecord record;
  EXPECT_TRUE(db_ReadDBInfo(environment, file, record)) << file;
  return db_WriteDBInfo(environment, file, record);
}

std::int16_t OldLayout::stored_version(const std::string& file) const {
  VersionRecord record;
  EXPECT_TRUE(db_ReadDBInfo(environment, file, record)) << file;
  return record.MinVersion;
}

std::vector<std::string> row_lines(engine::Database& database) {
  std::vector<std::string> lines;
  engine::TableDefs& tables = database.table_defs();
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    const std::string name = tables.item(i)->name();
    const auto rows = database.open_recordset(name);
    for (; !rows->eof(); rows->move_next()) lines.push_back(support::to_lower(name) + ":" + row_line(*rows));
  }
  return lines;
}

std::set<std::string> layout_differences(engine::Database& database, engine::Database& model) {
  std::set<std::string> differences;
  compare_names(database.table_defs(), model.table_defs(), "", differences, [&](const std::string& name) {
    compare_fields(*database.table_defs().item(name), *model.table_defs().item(name), name, differences);
  });
  return differences;
}

}  // namespace database::testing
