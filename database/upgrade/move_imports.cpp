// Step 42: the import list under its new name, whose texts may not be empty.
#include <fmt/core.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "database/schema/table_builder.h"
#include "database/upgrade/actions.h"

namespace database::upgrade {
namespace {

constexpr std::string_view old_table = "imports", new_table = "import";

struct CommonField {
  std::string name;
  /// The new table takes no empty text: it is stored as Null.
  bool blank_is_null = false;
  bool numbered = false;
};

std::vector<CommonField> common_fields(engine::Database& database) {
  const auto from = database.table_defs().item(old_table), to = database.table_defs().item(new_table);
  std::vector<CommonField> common;
  for (std::int32_t i = 0; i < from->fields().count(); ++i) {
    const auto field = from->fields().item(i);
    if (!schema::has_field(*to, field->name())) continue;
    const auto target = to->fields().item(field->name());
    common.push_back({field->name(),
                      engine::is_text(field->type()) && engine::is_text(target->type()) &&
                          !target->allow_zero_length() && !target->required(),
                      (target->attributes() & engine::attribute_auto_increment) != 0});
  }
  return common;
}

bool has_blanks(engine::Database& database, const std::vector<CommonField>& fields) {
  std::string condition;
  for (const CommonField& field : fields) {
    if (field.blank_is_null) condition += (condition.empty() ? "[" : " OR [") + field.name + "]=''";
  }
  return !condition.empty() && !database.open_recordset("SELECT * FROM imports WHERE " + condition)->eof();
}

std::string copy_statement(const std::vector<CommonField>& fields) {
  std::string names, values;
  for (const CommonField& field : fields) {
    const std::string name = "[" + field.name + "]", comma = names.empty() ? "" : ",";
    names += comma + name;
    values += comma + (field.blank_is_null ? "iif(" + name + "='',Null," + name + ")" : name);
  }
  return "INSERT INTO import (" + names + ") SELECT " + values + " FROM imports";
}

/// The rows that have arrived; nothing where the statement failed as a whole.
std::optional<std::int32_t> copy_rows(Run& run, const std::vector<CommonField>& fields) {
  const auto executed = [&](const std::string& statement) {
    return run.procedure.step([&] { run.database.execute(statement); });
  };
  const bool blanks = has_blanks(run.database, fields);
  bool copied = !blanks && executed("INSERT INTO import SELECT * FROM imports");
  if (!copied && (blanks || run.procedure.error().number() == support::error_number::insert_unknown_field)) {
    copied = executed(copy_statement(fields));
  }
  if (!copied) return std::nullopt;
  return run.database.records_affected();
}

/// Adds the row under another number, which must not stay: entries name imports by their numbers.
void try_row(engine::Database& database, const engine::Recordset& row, const std::vector<CommonField>& fields) {
  const auto target = database.open_recordset(new_table);
  target->add_new();
  const std::int32_t number = engine::to_int32(target->value("id"));
  for (const CommonField& field : fields) {
    if (field.numbered) continue;
    engine::Value value = row.value(field.name);
    if (field.blank_is_null && value == engine::Value("")) value = engine::Null{};
    target->set_value(field.name, value);
  }
  target->update();
  database.execute(fmt::format("DELETE * FROM import WHERE id={}", number));
}

/// Why the first row that is not there did not arrive; empty where nobody knows.
std::string reason(Run& run, const std::vector<CommonField>& fields) {
  std::string text;
  run.procedure.step([&] {
    const auto rows = run.database.open_recordset("SELECT * FROM imports WHERE id NOT IN (SELECT id FROM import)");
    if (rows->eof() || run.procedure.step([&] { try_row(run.database, *rows, fields); })) return;
    text = run.procedure.error().what();
  });
  return text;
}

}  // namespace

void move_imports(Run& run, const Action&, std::string_view table) {
  run.procedure.guarded([&] {
    const std::int32_t rows = run.database.open_recordset(table)->record_count();
    const std::vector<CommonField> fields = common_fields(run.database);
    const std::int32_t arrived = copy_rows(run, fields).value_or(0);
    if (arrived == rows) return run.database.table_defs().remove(table);
    const RowsLeft left{std::string(table), rows - arrived, rows, reason(run, fields)};
    if (run.environment.rows_left) run.environment.rows_left(left);
    throw support::RuntimeError(support::error_number::internal_error, sentence(left));
  });
}

}  // namespace database::upgrade
