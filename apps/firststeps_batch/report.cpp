#include "apps/firststeps_batch/report.h"

#include <algorithm>

#include "apps/console/text_table.h"
#include "support/file_system.h"
#include "support/json_writer.h"
#include "wizard/finding.h"

namespace firststeps_batch {
namespace {

using Entry = wizard::FinishReport::Entry;
using What = wizard::FinishReport::What;

std::string_view word(What what) {
  switch (what) {
    case What::RegistryValue:
      return "registry";
    case What::IniKey:
      return "ini";
    case What::File:
      return "file";
    case What::RecycledFile:
      return "recycled";
  }
  return "";
}

/// The entry's place; a file by its host path.
std::string place(const Entry& entry) {
  return entry.what == What::RegistryValue ? entry.place : support::host_file_system().host_path(entry.place);
}

/// Writes each key or file once, and below it what was written there.
void write_places(std::ostream& out, const std::vector<Entry>& entries) {
  const auto same_place = [](const Entry& one, const Entry& other) {
    return one.what == other.what && one.place == other.place;
  };
  for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
    const auto here = [&](const Entry& other) { return same_place(*entry, other); };
    if (std::any_of(entries.begin(), entry, here)) continue;
    out << word(entry->what) << ' ' << console::one_line(place(*entry)) << '\n';
    for (const Entry& other : entries) {
      if (!here(other) || other.name.empty()) continue;
      out << "    " << console::one_line(other.name) << (entry->what == What::File ? "" : " = ")
          << console::one_line(other.value) << '\n';
    }
  }
}

void write_problems(std::ostream& out, const std::vector<Entry>& entries) {
  if (entries.empty()) return;
  out << "\nNot written:\n";
  for (const Entry& entry : entries) {
    out << "  " << word(entry.what) << ' ' << console::one_line(place(entry)) << (entry.name.empty() ? "" : " ")
        << console::one_line(entry.name) << ": " << console::one_line(entry.problem) << '\n';
  }
}

void write_entry(support::JsonWriter& json, const Entry& entry, bool dry_run) {
  json.begin_object().key("what").text(word(entry.what)).key("place").text(place(entry));
  json.key("name").text(entry.name).key("value").text(entry.value);
  json.key("written").boolean(entry.written && !dry_run).key("problem").text(entry.problem).end_object();
}

void write_warnings(std::ostream& out, const std::vector<Warning>& warnings) {
  if (warnings.empty()) return;
  out << "\nWarnings:\n";
  for (const Warning& warning : warnings) {
    out << "  " << warning.severity << ": ";
    if (!warning.page.empty()) out << '[' << warning.page << "] ";
    if (!warning.control.empty()) out << warning.control << ": ";
    out << console::one_line(warning.text) << '\n';
  }
}

void write_warnings(support::JsonWriter& json, const std::vector<Warning>& warnings) {
  json.key("warnings").begin_array();
  for (const Warning& warning : warnings) {
    json.begin_object().key("severity").text(warning.severity).key("page").text(warning.page);
    json.key("control").text(warning.control).key("text").text(warning.text).end_object();
  }
  json.end_array();
}

void write_texts(support::JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
  json.key(key).begin_array();
  for (const std::string& text : texts) json.text(text);
  json.end_array();
}

}  // namespace

std::vector<Warning> warnings_of(const wizard::frmAssistantFirstSteps& assistant) {
  std::vector<Warning> warnings;
  for (const wizard::Finding& finding : assistant.findings()) {
    const std::string severity = finding.severity == wizard::Severity::Warning ? "warning" : "note";
    warnings.push_back({severity, finding.page, finding.control, finding_text(assistant.config(), finding)});
  }
  return warnings;
}

void write_text(std::ostream& out, const RunReport& report) {
  std::vector<Entry> written = report.finish.entries, problems;
  const auto first_problem =
      std::stable_partition(written.begin(), written.end(), [](const Entry& entry) { return entry.problem.empty(); });
  problems.assign(first_problem, written.end());
  written.erase(first_problem, written.end());
  out << (report.dry_run ? "Would be written:\n\n" : "Written:\n\n");
  write_places(out, written);
  write_problems(out, problems);
  write_warnings(out, report.warnings);
}

void write_json(std::ostream& out, const RunReport& report) {
  support::JsonWriter json(out);
  json.begin_object().key("dry_run").boolean(report.dry_run).key("complete").boolean(report.finish.complete());
  json.key("entries").begin_array();
  for (const Entry& entry : report.finish.entries) write_entry(json, entry, report.dry_run);
  json.end_array();
  write_warnings(json, report.warnings);
  write_texts(json, "messages", report.messages);
  write_texts(json, "unused_pages", report.unused_pages);
  json.end_object();
  out << '\n';
}

}  // namespace firststeps_batch
