#include "database/engine/embedded/file_check.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "support/encoding.h"
#include "support/error.h"

namespace engine::embedded {

namespace {

/// More faults would say nothing new of a file that is beyond repair.
constexpr int most_faults = 100;
constexpr int pages_between_looks = 256;

using Look = std::function<void(std::int64_t done, std::int64_t all)>;

void check_pages(Connection& file, const FaultsTold& tell, const Look& look) {
  const std::int64_t size = file.integer("PRAGMA page_size"), bytes = file.file_size();
  const std::int64_t wanted = file.integer("PRAGMA page_count"), pages = bytes / size;
  if (pages < wanted) {
    tell({"page", {}, fmt::format("the file ends before its last pages: {} of {} are there", pages, wanted)});
  }
  int told = 0;
  for (std::int64_t page = 1; page <= std::min(pages, wanted); ++page) {
    if (page % pages_between_looks == 0) look(page, wanted);
    if (file.is_page_sound(page, size) || ++told > most_faults) continue;
    tell({"page", {}, fmt::format("page {} of {} cannot be read, or is not as it was written", page, wanted)});
  }
  if (told > most_faults) tell({"page", {}, fmt::format("{} more pages like these", told - most_faults)});
}

/// Which table owns each tree and index that SQLite's report names.
class Owners {
 public:
  explicit Owners(Connection& file) {
    const PooledStatement rows = file.statement("SELECT rootpage, name, tbl_name FROM sqlite_schema");
    while (rows->step()) {
      roots_.emplace(rows->integer(0), rows->text(2));
      names_.emplace(rows->text(1), rows->text(2));
    }
  }
  /// The table that a line of the report is about; empty where the line does not tell.
  std::string table_of(std::string_view line) const {
    if (const std::string_view number = word_behind(line, "Tree "); !number.empty()) {
      std::int64_t root = 0;
      std::from_chars(number.data(), number.data() + number.size(), root);
      const auto owner = roots_.find(root);
      if (owner != roots_.end()) return owner->second;
    }
    for (const std::string_view mark : {"missing from index ", "entries in index ", "entry in index "}) {
      const std::size_t place = line.find(mark);
      if (place == std::string_view::npos) continue;
      const auto owner = names_.find(line.substr(place + mark.size()));
      if (owner != names_.end()) return owner->second;
    }
    return {};
  }

 private:
  static std::string_view word_behind(std::string_view line, std::string_view mark) {
    const std::size_t place = line.find(mark);
    if (place == std::string_view::npos) return {};
    const std::string_view rest = line.substr(place + mark.size());
    return rest.substr(0, rest.find(' '));
  }

  std::map<std::int64_t, std::string> roots_;
  std::map<std::string, std::string, std::less<>> names_;
};

void check_structure(Connection& file, const FaultsTold& tell) {
  const Owners owners{file};
  const PooledStatement report = file.statement(fmt::format("PRAGMA integrity_check({})", most_faults));
  while (report->step()) {
    const std::string_view text = report->text(0);
    if (text == "ok") continue;
    // A text may hold several lines. SQLite names the file in a line of its own, which begins with "***".
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = std::min(text.find('\n', begin), text.size());
      const std::string_view line = text.substr(begin, end - begin);
      begin = end + 1;
      if (!line.starts_with("***")) tell({"structure", owners.table_of(line), std::string(line)});
    }
  }
}

/// If damage keeps a check from reaching its end, that is a fault of its own.
template <typename Check>
void run(std::string_view kind, const FaultsTold& tell, Check&& check) {
  try {
    std::forward<Check>(check)();
  } catch (const support::RuntimeError& error) {
    if (!tells_of_the_file(error)) throw;
    tell({kind, {}, std::string("could not be looked at to the end: ") + error.what()});
  }
}

}  // namespace

bool check_file(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell, const Look& look) {
  run("page", tell, [&] { check_pages(file, tell, look); });
  try {
    file.integer("SELECT count(*) FROM sqlite_schema");
  } catch (const support::RuntimeError& error) {
    if (!tells_of_the_file(error)) throw;
    tell({"structure", {}, "the list of the tables is damaged: none of them can be read"});
    return false;
  }
  run("structure", tell, [&] { check_structure(file, tell); });
  run("catalogue", tell, [&] { check_catalogue(file, catalogue, tell); });
  run("rule", tell, [&] { check_rules(file, catalogue, tell); });
  return true;
}

namespace {

/// The objects that the file itself says that it holds, by name.
struct StoredObject {
  std::string type;   ///< "table", "index" …
  std::string table;  ///< of an index
  std::string sql;
};
using StoredObjects = std::map<std::string, StoredObject, std::less<>>;

StoredObjects stored_objects(Connection& file) {
  StoredObjects objects;
  const PooledStatement rows = file.statement("SELECT name, type, tbl_name, sql FROM sqlite_schema");
  while (rows->step()) {
    objects[std::string(rows->text(0))] = {std::string(rows->text(1)), std::string(rows->text(2)),
                                           std::string(rows->text(3))};
  }
  return objects;
}

/// True for SQLite's own objects and those of the catalogue.
bool is_internal(std::string_view name) { return name.starts_with("sqlite_") || name.starts_with("jet."); }

void check_fields(Connection& file, const TableDefinition& table, const FaultsTold& tell) {
  std::map<std::string, std::string> columns;
  const PooledStatement rows = file.statement("PRAGMA table_xinfo(" + quoted_name(table.name) + ")");
  while (rows->step()) columns.emplace(support::to_lower(rows->text(1)), rows->text(2));
  for (const FieldDefinition& field : table.fields) {
    const auto column = columns.find(support::to_lower(field.name));
    const FieldType* const type = find_field_type(field.type);
    if (column == columns.end()) {
      tell({"catalogue", table.name, "the field " + field.name + " has no column in the file"});
    } else if (!type || column->second != type->declaration.substr(0, type->declaration.find(' '))) {
      tell({"catalogue", table.name, "the field " + field.name + " has a column of another type"});
    }
    if (column != columns.end()) columns.erase(column);
  }
  for (const auto& [name, type] : columns) {
    tell({"catalogue", table.name, "the column " + name + " is no field"});
  }
}

void check_indexes(const StoredTable& table, const StoredObjects& objects, const FaultsTold& tell) {
  for (const IndexDefinition& index : table.definition.indexes) {
    const auto stored = objects.find(fmt::format("{}.{}", table.id, index.name));
    if (stored == objects.end() || stored->second.type != "index") {
      tell({"catalogue", table.definition.name, "the index " + index.name + " is not in the file"});
    } else if (stored->second.sql.starts_with("CREATE UNIQUE") != index.forbids_duplicates()) {
      tell({"catalogue", table.definition.name, "the index " + index.name + " has not the uniqueness that it should"});
    }
  }
}

std::set<std::string, std::less<>> names_of_indexes(const StoredCatalogue& catalogue) {
  std::set<std::string, std::less<>> names;
  for (const TablePointer& table : catalogue.tables()) {
    for (const IndexDefinition& index : table->definition.indexes) {
      names.insert(fmt::format("{}.{}", table->id, index.name));
    }
  }
  return names;
}

void check_what_is_not_ours(const StoredCatalogue& catalogue, const StoredObjects& objects, const FaultsTold& tell) {
  const auto indexes = names_of_indexes(catalogue);
  for (const auto& [name, object] : objects) {
    const bool known = object.type == "table" ? catalogue.find(name) != nullptr : indexes.contains(name);
    if (known || is_internal(name)) continue;
    tell({"catalogue", object.table, "the " + object.type + " " + name + " of the file is in no catalogue"});
  }
}

void count_breaches(Connection& file, const TableDefinition& table, const std::optional<jet_sql::Rule>& rule,
                    const std::string& place, const FaultsTold& tell) {
  if (!rule) return;
  const std::int64_t rows = file.integer("SELECT count(*) FROM " + quoted_name(table.name) + " AS " +
                                         quoted_name(jet_sql::rule_row) + " WHERE NOT (" + rule->condition + ")");
  if (rows > 0) tell({"rule", table.name, "the rule of " + place + " does not hold", rows});
}

}  // namespace

void check_catalogue(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell) {
  const StoredObjects objects = stored_objects(file);
  for (const TablePointer& table : catalogue.tables()) {
    const auto stored = objects.find(table->definition.name);
    if (stored == objects.end() || stored->second.type != "table") {
      tell({"catalogue", table->definition.name, "the table is not in the file"});
      continue;
    }
    check_fields(file, table->definition, tell);
    check_indexes(*table, objects, tell);
  }
  check_what_is_not_ours(catalogue, objects, tell);
}

void check_rules(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell) {
  for (const TablePointer& table : catalogue.tables()) {
    const TableDefinition& definition = table->definition;
    for (const FieldDefinition& field : definition.fields) {
      count_breaches(file, definition, jet_sql::compile_rule(field, definition), "the field " + field.name, tell);
    }
    count_breaches(file, definition, jet_sql::compile_rule(definition), "the table", tell);
  }
}

}  // namespace engine::embedded
