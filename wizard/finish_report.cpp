#include "wizard/finish_report.h"

#include <algorithm>
#include <iterator>

#include "support/windows_path.h"

namespace wizard {

namespace {

using What = FinishReport::What;

constexpr long setting = 6001, home_page = 6002, other_file = 6011, toolbar = 6009;
constexpr long see_details = 6029, error_number = 4909;

/// The name of a file in the report, and the number of the text that names it to the user.
struct FileRow {
  std::string_view name;
  long text;
};

constexpr FileRow file_rows[] = {
    {"patient database", 6003}, {"laboratory definitions and preferred insulins", 6004},
    {"patient", 6005},          {"settings", 6006},
    {"therapy plan", 6007},     {"patient index", 6008},
    {"charts", 6010},
};

/// The texts of errors, by number: the engine's, those of files, and the language runtime's.
struct ErrorRow {
  support::error_number::Number number;
  long text;
};

constexpr ErrorRow error_rows[] = {
    {support::error_number::disk_error, 6021},
    {support::error_number::no_disk_space, 6021},
    {support::error_number::disk_full, 6021},
    {support::error_number::file_not_opened, 6022},
    {support::error_number::read_only, 6022},
    {support::error_number::invalid_path, 6022},
    {support::error_number::permission_denied, 6022},
    {support::error_number::path_file_access, 6022},
    {support::error_number::path_not_found, 6022},
    {support::error_number::file_in_use, 6023},
    {support::error_number::database_open_elsewhere, 6023},
    {support::error_number::database_locked, 6023},
    {support::error_number::unknown_format, 6024},
    {support::error_number::damaged_file, 6024},
    {support::error_number::wrong_password, 6025},
    {support::error_number::database_exists, 6033},
};

long reason_of(const FinishReport::Entry& entry) {
  const auto* row = std::ranges::find(error_rows, entry.error, &ErrorRow::number);
  if (row != std::end(error_rows)) return row->text;
  return entry.reason != 0 && entry.error == 0 ? entry.reason : see_details;
}

}  // namespace

std::string name_of_entry(const InstallationConfig& config, const FinishReport::Entry& entry) {
  constexpr int file_name = static_cast<int>(support::PathPart::FileName);
  if (entry.what == What::RegistryValue) return config.text(setting, {entry.name});
  if (entry.what == What::RecycledFile) return config.text(toolbar, {support::ExtractFromPath(entry.place, file_name)});
  const auto* row = std::ranges::find(file_rows, entry.name, &FileRow::name);
  if (row != std::end(file_rows)) return config.text(row->text);
  return entry.what == What::IniKey ? config.text(home_page) : config.text(other_file, {entry.place});
}

std::string error_reason(const InstallationConfig& config, const support::RuntimeError& error) {
  const auto* row = std::ranges::find(error_rows, error.number(), &ErrorRow::number);
  if (row != std::end(error_rows)) return config.text(row->text);
  return config.text(error_number, {std::to_string(error.number())});
}

namespace {

std::string technical_line(const FinishReport::Entry& entry) {
  std::string line = entry.place;
  if (!entry.name.empty()) line += ", " + entry.name;
  if (!entry.value.empty()) line += " = " + entry.value;
  return line + ": " + entry.problem;
}

}  // namespace

std::vector<FinishProblem> finish_problems(const InstallationConfig& config, const FinishReport& report) {
  std::vector<FinishProblem> problems;
  for (const auto& entry : report.entries) {
    if (entry.written) continue;
    FinishProblem problem{name_of_entry(config, entry), config.text(reason_of(entry)), technical_line(entry)};
    const auto same = std::ranges::find_if(problems, [&](const FinishProblem& other) {
      return other.what == problem.what && other.reason == problem.reason;
    });
    if (same == problems.end())
      problems.push_back(std::move(problem));
    else
      same->technical += "\r\n" + problem.technical;
  }
  return problems;
}

namespace {

constexpr long settings = 6012, recycled = 6013;

/// A place and the names of what was written there, in the report's order.
struct WrittenPlace {
  std::string place;
  std::vector<std::string> names;
};

void add_name(std::vector<WrittenPlace>& places, const std::string& place, const std::string& name) {
  auto at = std::ranges::find(places, place, &WrittenPlace::place);
  if (at == places.end()) at = places.insert(at, {place, {}});
  if (std::ranges::find(at->names, name) == at->names.end()) at->names.push_back(name);
}

/// The names of single settings tell a user nothing, so all of them are called settings.
std::string name_in_outcome(const InstallationConfig& config, const FinishReport::Entry& entry) {
  if (entry.what == FinishReport::What::RegistryValue) return config.text(settings);
  if (entry.what == FinishReport::What::RecycledFile) return config.text(recycled);
  return name_of_entry(config, entry);
}

}  // namespace

std::string written_text(const InstallationConfig& config, const FinishReport& report) {
  std::vector<WrittenPlace> places;
  for (const FinishReport::Entry& entry : report.entries)
    if (entry.written) add_name(places, entry.place, name_in_outcome(config, entry));
  std::string text;
  for (auto place = places.begin(); place != places.end();) {
    const std::vector<std::string> names = place->names;
    const auto others =
        std::stable_partition(place, places.end(), [&](const WrittenPlace& other) { return other.names == names; });
    for (const std::string& name : names) text += name + "\r\n";
    for (; place != others; ++place) text += "    " + place->place + "\r\n";
  }
  return text;
}

}  // namespace wizard
