#include "database/transfer/export.h"

#include <algorithm>
#include <iterator>

#include "apps/console/progress_line.h"
#include "apps/console/text_table.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "database/jet_import/engine_source.h"
#include "support/json_writer.h"

namespace patientdb {
namespace {

constexpr std::string_view export_usage =
    "FILE FOLDER [TABLE…] [--format csv|json|sqlite|sql] [--encoding utf-8|windows-1252] [--leave-out-bytes] [--json]";

constexpr std::string_view export_details =
    R"(The tables of FILE, or those that are named, are written into the new FOLDER, with a README.txt on what is in it. The
folder has its name when it is complete; where something lies there already, it is error 3204. FILE may be in use:
what is exported is its state of one moment.

csv, the default, is a file for each table; Null is a cell of nothing, an empty text is "". json is a file for each
table, too. sqlite is one file that any tool opens, sql one script. Dates are ISO 8601, decimals follow a point.
"patientdb import" takes csv and sqlite back.

Texts are UTF-8. With --encoding windows-1252, for csv and sql, a character that this code page does not have is error
3421 with its table, field and row.

What was exported is not protected by any password. A field "Password" is exported as Null. While the tables are being
read, a change by another program waits, and is error 3045 to it after five seconds.)";

constexpr console::Option format_option{"--format", "FORM", "csv (the default), json, sqlite or sql."};
constexpr console::Option encoding_option{"--encoding", "NAME", "utf-8 (the default) or windows-1252."};
constexpr console::Option leave_out_bytes_option{"--leave-out-bytes", "",
                                                 "Leave out fields of bytes or embedded objects."};

constexpr console::Option export_options[] = {format_option, encoding_option,      leave_out_bytes_option,
                                              json_option,   password_file_option, console::help_option};

struct NamedFormat {
  std::string_view name;
  transfer::Format format;
  bool has_encodings;
};
constexpr NamedFormat formats[] = {{"csv", transfer::Format::Csv, true},
                                   {"json", transfer::Format::Json, false},
                                   {"sqlite", transfer::Format::Sqlite, false},
                                   {"sql", transfer::Format::Sql, true}};

transfer::ExportChoices choices_of(const console::Arguments& arguments) {
  transfer::ExportChoices choices;
  const std::string name = arguments.value(format_option.name).value_or("csv");
  const auto* format = std::ranges::find(formats, std::string_view(name), &NamedFormat::name);
  if (format == std::end(formats)) {
    throw console::UsageError("--format takes csv, json, sqlite or sql, not \"" + name + "\".");
  }
  choices.format = format->format;
  if (const auto encoding = arguments.value(encoding_option.name)) {
    if (!format->has_encodings) throw console::UsageError("--encoding goes with csv and sql.");
    if (*encoding != "utf-8" && *encoding != "windows-1252") {
      throw console::UsageError("--encoding takes utf-8 or windows-1252, not \"" + *encoding + "\".");
    }
    if (*encoding == "windows-1252") choices.encoding = transfer::TextEncoding::Cp1252;
  }
  const std::vector<std::string>& operands = arguments.operands();
  choices.tables.assign(operands.begin() + 2, operands.end());
  choices.leave_out_foreign_fields = arguments.has(leave_out_bytes_option.name);
  return choices;
}

void write_report_json(std::ostream& out, const std::string& folder, const transfer::ExportReport& report) {
  support::JsonWriter json(out);
  json.begin_object().key("folder").text(folder).key("tables").begin_array();
  for (const transfer::ExportedTable& table : report.tables) {
    json.begin_object().key("name").text(table.name).key("file").text(table.file);
    json.key("rows").integer(table.rows).end_object();
  }
  json.end_array().end_object();
  out << '\n';
}

void write_report_text(std::ostream& out, const std::string& folder, const transfer::ExportReport& report) {
  console::TextTable table;
  table.add_column("Table");
  table.add_column("File");
  table.add_column("Rows", console::TextTable::Align::Right);
  std::int64_t rows = 0;
  for (const transfer::ExportedTable& row : report.tables) {
    table.add_row({row.name, row.file, std::to_string(row.rows)});
    rows += row.rows;
  }
  table.write(out);
  out << folder << ": " << report.tables.size() << " tables, " << rows << " rows\n";
}

int run_export(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(2, SIZE_MAX, export_usage);
  const transfer::ExportChoices choices = choices_of(arguments);
  const std::string& folder = arguments.operands()[1];
  if (folder.empty()) throw console::UsageError("The folder's name is empty.");
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  // The transaction makes all tables belong to the same moment.
  open.database->begin_transaction();
  const auto source = jet_import::engine_source(std::move(open.engine), std::move(open.database));
  const transfer::ExportReport report = transfer::export_tables(*source, folder, choices, &progress);
  progress.clear();
  for (const std::string& note : report.notes) console.err << note << '\n';
  console.err << "What was exported is not protected by a password.\n";
  arguments.has(json_option.name) ? write_report_json(console.out, folder, report)
                                  : write_report_text(console.out, folder, report);
  return console::exit_done;
}

}  // namespace

const Command export_command{"export",       export_usage,   "Writes tables into files for other programs.",
                             export_details, export_options, run_export};

}  // namespace patientdb
