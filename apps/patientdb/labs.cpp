#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"
#include "database/lab_definitions.h"

namespace patientdb {
namespace {

constexpr std::string_view labs_usage = "FILE [--default-ranges ID] [--json]";

constexpr console::Option labs_options[] = {
    {"--default-ranges", "ID", "First writes the default ranges of the laboratory with this number."},
    json_option,
    password_file_option,
    console::help_option,
};

constexpr std::int16_t default_range_count = 13;

/// The types of the definitions, in their order.
std::vector<std::int16_t> definition_types(engine::Database& database) {
  std::vector<std::int16_t> types;
  const auto rows = database.open_recordset("SELECT type FROM labdefs ORDER BY type");
  for (; !rows->eof(); rows->move_next()) {
    if (!engine::is_null(rows->value("type"))) types.push_back(engine::to_int16(rows->value("type")));
  }
  return types;
}

std::vector<database::LabDefinition> definitions(const database::Environment& environment, engine::Database& database) {
  std::vector<database::LabDefinition> found;
  for (const std::int16_t type : definition_types(database)) {
    database::LabDefinition definition;
    if (database::db_GetLabDefinition(environment, database, type, 0, definition)) found.push_back(definition);
  }
  return found;
}

std::string limit(float value) { return value < 0 ? "" : support::plain_number(value); }

void write_text(std::ostream& out, const std::vector<database::LabDefinition>& found) {
  using Align = console::TextTable::Align;
  console::TextTable table;
  table.add_column("Type", Align::Right);
  for (const std::string_view title : {"Field", "Name"}) table.add_column(title);
  for (const std::string_view title : {"From", "Until", "Critical", "Values"}) table.add_column(title, Align::Right);
  for (const auto& entry : found) {
    table.add_row({std::to_string(entry.type), entry.field, entry.LongDesc, limit(entry.rangefrom),
                   limit(entry.rangeuntil), limit(entry.CriticalThreshold), std::to_string(entry.stored_values)});
  }
  table.write(out);
}

void write_json_definitions(std::ostream& out, const std::vector<database::LabDefinition>& found) {
  support::JsonWriter json(out);
  json.begin_array();
  for (const auto& entry : found) {
    json.begin_object().key("type").integer(entry.type).key("field").text(entry.field);
    json.key("longdesc").text(entry.LongDesc).key("bdtkey").text(entry.BDTKEY).key("unit").integer(entry.unit);
    json.key("displayunit").integer(entry.displayunit).key("rangefrom").number(entry.rangefrom);
    json.key("rangeuntil").number(entry.rangeuntil).key("criticalthreshold").number(entry.CriticalThreshold);
    json.key("values").integer(entry.stored_values).end_object();
  }
  json.end_array();
  out << '\n';
}

int run_labs(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, labs_usage);
  const bool writes = arguments.has("--default-ranges");
  const ToolEnvironment environment(arguments, console);
  const OpenDatabase open = open_database(arguments, console, writes ? Access::ReadWrite : Access::ReadOnly);
  if (writes) {
    const std::int32_t laboratory = arguments.number("--default-ranges", 0, 0, INT32_MAX);
    const SkippedStepLines skipped(console.err);
    const auto stored = database::db_SetDefaultLabRanges(environment.get(), *open.database, laboratory);
    console.err << stored << " ranges written for laboratory " << laboratory << '\n';
    if (stored != default_range_count) return console::exit_failed;
  }
  const auto found = definitions(environment.get(), *open.database);
  arguments.has(json_option.name) ? write_json_definitions(console.out, found) : write_text(console.out, found);
  return console::exit_done;
}

}  // namespace

const Command labs_command{"labs", labs_usage,   "Shows the laboratory definitions and how many values are stored.",
                           "",     labs_options, run_labs};

}  // namespace patientdb
