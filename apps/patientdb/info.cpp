#include <span>

#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"
#include "database/columns.h"
#include "database/version_record.h"

namespace patientdb {
namespace {

constexpr std::string_view info_usage = "FILE [--json]";

constexpr console::Option info_options[] = {json_option, password_file_option, console::help_option};

struct Line {
  std::string_view name;
  engine::Value value;
};

/// A version as stored; Null if the row has no such column, because it must not be shown as the current version.
engine::Value version(const engine::Recordset& row, std::string_view column) {
  return database::has_column(row, column) ? row.value(column) : engine::Value(engine::Null{});
}

/// The record under its field names, without the password, which is never shown.
std::vector<Line> lines_of(const engine::Recordset& row, const database::VersionRecord& record) {
  return {
      {"MajVersion", version(row, "MajVersion")},
      {"MinVersion", version(row, "MinVersion")},
      {"Type", std::int32_t{record.Type}},
      {"Desc", record.Desc},
      {"LastBackup", date_or_null(record.LastBackup)},
      {"LastChanged", date_or_null(record.LastChanged)},
      {"Created", date_or_null(record.Created)},
      {"LastUser", record.LastUser},
      {"LastArchive", date_or_null(record.LastArchive)},
      {"LastCompressed", date_or_null(record.LastCompressed)},
      {"lAvailableData", record.lAvailableData},
      {"sAvailableData", record.sAvailableData},
  };
}

void write_record_text(std::ostream& out, std::span<const Line> lines) {
  console::TextTable table;
  table.add_column("Field");
  table.add_column("Value");
  for (const Line& line : lines) table.add_row({std::string(line.name), cell(line.value)});
  table.write(out);
}

void write_record_json(std::ostream& out, std::span<const Line> lines) {
  support::JsonWriter json(out);
  json.begin_object();
  for (const Line& line : lines) write_json(json.key(line.name), line.value);
  json.end_object();
  out << '\n';
}

int run_info(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, info_usage);
  const OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  const auto row = open.database->open_recordset("SELECT * FROM db_info");
  row->move_first();
  const SkippedStepLines skipped(console.err);
  database::VersionRecord record;
  const bool known = database::db_ReadDBInfo(database::Environment{}, *open.database, record);
  const std::vector<Line> lines = lines_of(*row, record);
  arguments.has(json_option.name) ? write_record_json(console.out, lines) : write_record_text(console.out, lines);
  if (!known && skipped.count() == 0) console.err << "The description names another product.\n";
  return skipped.count() == 0 ? console::exit_done : console::exit_failed;
}

}  // namespace

const Command info_command{"info", info_usage, "Shows the version record.", "", info_options, run_info};

}  // namespace patientdb
