#include "database/keeping/row_check.h"

#include <map>
#include <string>
#include <variant>

#include "database/engine/file_care.h"
#include "database/keeping/references.h"
#include "support/encoding.h"

namespace database::keeping {
namespace {

/// What is checked in a field's values, and how many rows fail.
struct CheckedField {
  std::string name;
  bool required = false, auto_number = false;
  std::size_t most_characters = 0;  ///< 0: any number of characters
  const NumberSet* targets = nullptr;
  const Reference* reference = nullptr;
  std::int64_t missing = 0, too_long = 0, pointing_nowhere = 0;
};

/// The rows to which others point. Each target is read only once.
class Targets {
 public:
  Targets(engine::Database& database, CheckReport& report) : database_(database), report_(report) {}

  /// Null where the target cannot be read. This or another part of the check then reports that.
  const NumberSet* find(const Reference& reference) {
    const std::string key = std::string(reference.target) + "." + std::string(reference.key);
    if (const auto known = sets_.find(key); known != sets_.end()) return known->second.get();
    auto& set = sets_[key];
    try {
      set = std::make_unique<NumberSet>(numbers_of(database_, reference.target, reference.key));
    } catch (const support::RuntimeError& error) {
      if (!engine::tells_of_the_file(error)) throw;
      report_.notes.push_back("What points to " + key + " was not looked at: " + error.what());
    }
    return set.get();
  }

 private:
  engine::Database& database_;
  CheckReport& report_;
  std::map<std::string, std::unique_ptr<NumberSet>> sets_;
};

const Reference* reference_of(std::string_view table, std::string_view field) {
  for (const Reference& reference : references()) {
    if (support::equal_ignoring_case(reference.table, table) && support::equal_ignoring_case(reference.field, field))
      return &reference;
  }
  return nullptr;
}

std::vector<CheckedField> checked_fields(engine::TableDef& table, Targets& targets) {
  std::vector<CheckedField> fields;
  for (std::int32_t i = 0; i < table.fields().count(); ++i) {
    const auto field = table.fields().item(i);
    CheckedField checked{.name = field->name(), .required = field->required()};
    checked.auto_number = (field->attributes() & engine::attribute_auto_increment) != 0;
    if (field->type() == engine::DataType::Text) checked.most_characters = static_cast<std::size_t>(field->size());
    checked.reference = reference_of(table.name(), checked.name);
    if (checked.reference) checked.targets = targets.find(*checked.reference);
    fields.push_back(std::move(checked));
  }
  return fields;
}

void check_value(CheckedField& field, const engine::Value& value) {
  if (engine::is_null(value)) {
    if (field.required || field.auto_number) ++field.missing;
    return;
  }
  const auto* const text = std::get_if<std::string>(&value);
  if (text && field.most_characters > 0 && support::character_count(*text) > field.most_characters) ++field.too_long;
  const auto* const number = std::get_if<std::int32_t>(&value);
  if (!field.targets || !number || (field.reference->may_be_none && *number <= 0)) return;
  if (!field.targets->contains(*number)) ++field.pointing_nowhere;
}

class RowCheck {
 public:
  RowCheck(const Environment& environment, engine::Database& database, CheckReport& report)
      : progress_(environment.progress), database_(database), report_(report), targets_(database, report) {}

  void check_table(engine::TableDef& table) {
    const std::string name = table.name();
    if (progress_) progress_->set_caption(name);
    std::vector<CheckedField> fields = checked_fields(table, targets_);
    std::int64_t rows = 0;
    try {
      read(name, fields, rows);
    } catch (const support::RuntimeError& error) {
      if (!engine::tells_of_the_file(error)) throw;
      report_.findings.push_back(
          {"row", name, {}, "the row behind the first " + std::to_string(rows) + " cannot be read: " + error.what()});
    }
    report_.rows += rows;
    for (const CheckedField& field : fields) tell(name, field);
    for (std::int32_t i = 0; i < table.indexes().count(); ++i) check_uniqueness(name, *table.indexes().item(i));
  }

 private:
  void read(const std::string& table, std::vector<CheckedField>& fields, std::int64_t& count) {
    if (fields.empty()) return;
    std::string sql = "SELECT ";
    for (const CheckedField& field : fields) sql += (&field == fields.data() ? "[" : ", [") + field.name + "]";
    const auto rows = database_.open_forward_only(sql + " FROM [" + table + "]");
    for (; !rows->eof(); rows->move_next()) {
      for (std::size_t i = 0; i < fields.size(); ++i) {
        check_value(fields[i], rows->value(static_cast<std::int32_t>(i)));
      }
      ++count;
      end_if_interrupted(progress_);
    }
  }

  void tell(const std::string& table, const CheckedField& field) {
    const auto add = [&](const char* check, const std::string& text, std::int64_t rows) {
      if (rows > 0) report_.findings.push_back({check, table, field.name, text, rows});
    };
    const char* const missing =
        field.auto_number ? "has no AutoNumber, which the engine gives every row" : "has no value, and must have one";
    add("required", missing, field.missing);
    add("size", "holds more than " + std::to_string(field.most_characters) + " characters", field.too_long);
    if (field.reference)
      add("reference", "points to no row of " + std::string(field.reference->target), field.pointing_nowhere);
  }

  /// Null in one of its fields exempts a row from a unique index, but is forbidden in a primary index.
  void check_uniqueness(const std::string& table, engine::Index& index) {
    if (!index.unique() && !index.primary()) return;
    std::string names, all_given, any_missing;
    for (std::int32_t i = 0; i < index.fields().count(); ++i) {
      const std::string field = "[" + index.fields().item(i)->name() + "]";
      names += (i > 0 ? ", " : "") + field;
      all_given += (i > 0 ? " AND " : "") + field + " IS NOT NULL";
      any_missing += (i > 0 ? " OR " : "") + field + " IS NULL";
    }
    ask(table, index, "is there more than once in this index",
        "SELECT count(*) FROM (SELECT " + names + " FROM [" + table + "] WHERE " + all_given + " GROUP BY " + names +
            " HAVING count(*)>1) AS twice");
    if (index.primary() || index.required()) {
      ask(table, index, "has no value in a field of this index",
          "SELECT count(*) FROM [" + table + "] WHERE " + any_missing);
    }
  }

  void ask(const std::string& table, engine::Index& index, const char* text, const std::string& query) {
    try {
      const auto answer = database_.open_forward_only(query);
      const auto rows = static_cast<std::int64_t>(engine::to_double(answer->value(0)));
      if (rows > 0) report_.findings.push_back({"unique", table, index.name(), text, rows});
    } catch (const support::RuntimeError& error) {
      if (!engine::tells_of_the_file(error)) throw;
      report_.findings.push_back({"unique", table, index.name(), std::string("cannot be looked at: ") + error.what()});
    }
  }

  Progress* progress_;
  engine::Database& database_;
  CheckReport& report_;
  Targets targets_;
};

}  // namespace

void check_rows(const Environment& environment, engine::Database& database, CheckReport& report) {
  RowCheck check{environment, database, report};
  engine::TableDefs& tables = database.table_defs();
  if (environment.progress) environment.progress->start("", tables.count());
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    end_if_interrupted(environment.progress);
    check.check_table(*tables.item(i));
    if (environment.progress) environment.progress->set_value(i + 1);
  }
  if (environment.progress) environment.progress->finish();
  report.tables = tables.count();
}

}  // namespace database::keeping
