#include "database/keeping/check.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdint>

#include "apps/console/progress_line.h"
#include "apps/console/text_table.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "support/json_writer.h"

namespace patientdb {
namespace {

using database::keeping::CheckReport;
using database::keeping::Finding;

constexpr std::string_view check_usage = "FILE … [--json]";

constexpr std::string_view check_details =
    R"(Looks at every page of each FILE, at how pages, rows and indexes hang together, at the layout beside the one that the file's
version should have, and at every row: required fields, AutoNumbers, unique ones, rules, texts beyond their size, numbers that
point to no row (items without a plan, entries without their import). Nothing is changed. FILE may be in use; who writes
meanwhile waits.

Of a file of the Jet engine, pages and structure are not looked at.

Exit code 0 where nothing was found, 1 with findings, 5 where a file could not be opened (another password, in use, not
there), so that nothing is known of it. A file whose first page is damaged cannot be told from one with another password.)";

constexpr console::Option check_options[] = {json_option, password_file_option, console::help_option};

std::string sentence(const Finding& finding) {
  std::string text = finding.check + ": ";
  if (!finding.table.empty()) text += finding.table + (finding.field.empty() ? "" : "." + finding.field) + ": ";
  if (finding.rows > 0) text += fmt::format("{}{}", finding.rows, finding.rows == 1 ? " row: " : " rows: ");
  return text + finding.text;
}

void write_report_text(std::ostream& out, const std::string& file, const CheckReport& report) {
  for (const Finding& finding : report.findings) out << file << ": " << console::one_line(sentence(finding)) << '\n';
  for (const std::string& note : report.notes) out << file << ": note: " << console::one_line(note) << '\n';
  out << file << ": " << (report.layout.empty() ? "" : "layout " + report.layout + ", ") << report.tables << " tables, "
      << report.rows << " rows, ";
  const std::size_t count = report.findings.size();
  out << (count == 0 ? "nothing found" : fmt::format("{}{}", count, count == 1 ? " finding" : " findings")) << '\n';
}

void write_report_json(std::ostream& out, const std::string& file, const CheckReport& report) {
  support::JsonWriter json(out);
  json.begin_object().key("file").text(file).key("layout").text(report.layout);
  json.key("tables").integer(report.tables).key("rows").integer(report.rows).key("findings").begin_array();
  for (const Finding& finding : report.findings) {
    json.begin_object().key("check").text(finding.check).key("table").text(finding.table);
    json.key("field").text(finding.field).key("rows").integer(finding.rows).key("text").text(finding.text);
    json.end_object();
  }
  json.end_array().key("notes").begin_array();
  for (const std::string& note : report.notes) json.text(note);
  json.end_array().end_object();
  out << '\n';
}

/// Checks one file and returns its exit code.
int check_file(const console::Arguments& arguments, console::Console& console, const std::string& file,
               const std::string& word) {
  ToolEnvironment environment(arguments, console);
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  environment.get().progress = &progress;
  try {
    const CheckReport report = database::keeping::check_database(environment.get(), database_path(file), word);
    progress.clear();
    arguments.has(json_option.name) ? write_report_json(console.out, file, report)
                                    : write_report_text(console.out, file, report);
    return report.clean() ? console::exit_done : console::exit_failed;
  } catch (const support::RuntimeError& error) {
    progress.clear();
    if (error.number() == support::error_number::cancelled) throw;
    console.err << file << ": error " << error.number() << ": " << error.what() << '\n';
    return console::exit_unknown;
  }
}

int run_check(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, SIZE_MAX, check_usage);
  const std::string word = password(arguments, console);
  int code = console::exit_done;
  for (const std::string& file : arguments.operands())
    code = std::max(code, check_file(arguments, console, file, word));
  return code;
}

}  // namespace

const Command check_command{"check",       check_usage,   "Looks for damage and contradictions, and changes nothing.",
                            check_details, check_options, run_check};

}  // namespace patientdb
