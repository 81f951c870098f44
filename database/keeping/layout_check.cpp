#include "database/keeping/layout_check.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "database/layout_json.h"
#include "database/schema/schema.h"
#include "database/upgrade/actions.h"
#include "database/upgrade/steps.h"
#include "support/encoding.h"

namespace database::keeping {
namespace {

/// What the steps of the ladder say about a table or a field.
struct History {
  std::int16_t since = 0;                 ///< the first version that surely has it; 0: all versions
  std::set<engine::DataType> types = {};  ///< types that a step gave it
  std::set<std::int32_t> sizes = {};
  bool optional = false;  ///< a step does not create it where the step has nothing to do
};

std::string key_of(std::string_view table, std::string_view field = {}) {
  return support::to_lower(table) + "." + support::to_lower(field);
}

class Histories {
 public:
  Histories() {
    for (const upgrade::Step& step : upgrade::steps()) {
      for (const upgrade::Action& action : step.actions) take(step.version, action);
    }
  }
  const History& of(std::string_view table, std::string_view field = {}) const {
    static const History none;
    const auto found = histories_.find(key_of(table, field));
    return found == histories_.end() ? none : found->second;
  }

 private:
  void take(std::int16_t version, const upgrade::Action& action) {
    if (action.act == upgrade::create_table || action.act == upgrade::create_missing_table ||
        action.act == upgrade::create_after_conversion) {
      History& history = since(key_of(action.table), version);
      history.optional = action.act == upgrade::create_after_conversion;
    } else if (action.act == upgrade::rename_table) {
      since(key_of(action.text), version);
    } else if (action.act == upgrade::add_field || action.act == upgrade::add_missing_field) {
      if (action.tables.empty()) return take_field(version, action, action.table);
      for (const std::string_view table : action.tables) take_field(version, action, table);
    }
  }
  void take_field(std::int16_t version, const upgrade::Action& action, std::string_view table) {
    const auto take = [&](std::string_view name) {
      History& history = since(key_of(table, name), version);
      // The first step runs only below an older version than all other steps. Files in between have skipped it.
      if (version == upgrade::steps().front().version) history.optional = true;
      history.types.insert(action.field.type);
      history.sizes.insert(action.field.size);
    };
    if (action.names.empty()) return take(action.field.name);
    for (const std::string_view name : action.names) take(name);
  }
  History& since(const std::string& key, std::int16_t version) {
    History& history = histories_[key];
    if (history.since == 0) history.since = version;
    return history;
  }

  std::map<std::string, History> histories_;
};

struct ExpectedField {
  std::string_view name;
  engine::DataType type;
  std::int32_t size;
};

struct ExpectedTable {
  std::string_view name;
  std::vector<ExpectedField> fields;
  std::vector<std::string_view> indexes;
};

template <typename Table>
ExpectedTable expected(const Table& row) {
  ExpectedTable table{row.name, {}, {}};
  for (const auto& field : row.fields) table.fields.push_back({field.name, field.type, field.size});
  for (const auto& index : row.indexes) table.indexes.push_back(index.name);
  return table;
}

std::vector<ExpectedTable> expected_tables() {
  std::vector<ExpectedTable> tables;
  for (const schema::TableRow& row : schema::tables()) {
    if (!row.fields.empty()) tables.push_back(expected(row));
  }
  tables.push_back(expected(schema::treatment_profile));
  tables.push_back(expected(schema::normal_values));
  return tables;
}

/// Null where there is none.
template <typename Collection>
auto find_named(const Collection& collection, std::string_view name) -> decltype(collection.item(std::int32_t{})) {
  for (std::int32_t i = 0; i < collection.count(); ++i) {
    auto item = collection.item(i);
    if (support::equal_ignoring_case(item->name(), name)) return item;
  }
  return nullptr;
}

class LayoutCheck {
 public:
  LayoutCheck(engine::Database& database, std::int16_t version, CheckReport& report)
      : database_(database), version_(version), report_(report) {}

  void check(const ExpectedTable& wanted) {
    const History& history = histories_.of(wanted.name);
    const auto table = find_named(database_.table_defs(), wanted.name);
    if (table) {
      for (const ExpectedField& field : wanted.fields) check_field(wanted.name, field, *table);
      for (const std::string_view index : wanted.indexes) check_index(wanted.name, index, *table);
    } else if (history.since <= version_ && !history.optional) {
      add(wanted.name, {}, "the table is missing");
    }
  }

 private:
  void add(std::string_view table, std::string_view field, std::string text) {
    report_.findings.push_back({"layout", std::string(table), std::string(field), std::move(text)});
  }

  void check_field(std::string_view table, const ExpectedField& wanted, engine::TableDef& found) {
    const History& history = histories_.of(table, wanted.name);
    if (history.since > version_) return;
    const auto field = find_named(found.fields(), wanted.name);
    if (!field) {
      if (!history.optional) add(table, wanted.name, "the field is missing");
      return;
    }
    const engine::DataType type = field->type();
    // The repair of old data tables makes this field a shorter one.
    const bool repaired = wanted.name == "flag" && type == engine::DataType::Integer;
    if (type != wanted.type && !history.types.contains(type) && !repaired) {
      add(table, wanted.name,
          "the field is " + std::string(type_word(type)) + " instead of " + std::string(type_word(wanted.type)));
    } else if (type == engine::DataType::Text && wanted.size > 0 && field->size() != wanted.size &&
               !history.sizes.contains(field->size())) {
      add(table, wanted.name,
          "the field has " + std::to_string(field->size()) + " characters instead of " + std::to_string(wanted.size));
    }
  }

  /// For versions before the last one it is not known when they got an index.
  void check_index(std::string_view table, std::string_view name, engine::TableDef& found) {
    if (version_ < current_minor_version || find_named(found.indexes(), name)) return;
    add(table, name, "the index is missing");
  }

  engine::Database& database_;
  std::int16_t version_;
  CheckReport& report_;
  Histories histories_;
};

}  // namespace

void check_layout(engine::Database& database, const VersionRecord* record, CheckReport& report) {
  if (record) {
    report.layout = std::to_string(record->MajVersion) + "." + std::to_string(record->MinVersion);
    if (record->MajVersion != current_major_version || record->MinVersion > current_minor_version) {
      report.notes.push_back("The layout " + report.layout + " is none that this program knows; it was not compared.");
      return;
    }
    LayoutCheck check{database, record->MinVersion, report};
    for (const ExpectedTable& table : expected_tables()) check.check(table);
  } else if (find_named(database.table_defs(), schema::index_table.name)) {
    LayoutCheck check{database, current_minor_version, report};
    check.check(expected(schema::index_table));
  } else {
    report.notes.emplace_back("The file has no version record; its layout was not compared.");
  }
}

}  // namespace database::keeping
