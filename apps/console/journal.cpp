#include "apps/console/journal.h"

#include "support/file_system.h"
#include "support/host.h"

namespace console {
namespace {

constexpr std::size_t longest_path = 4096;

bool is_relative(std::string_view path) { return !path.starts_with('\\') && path.find(':') == std::string_view::npos; }

/// The host path that the settings name; empty if they name none.
std::string path_in_settings(const std::string& folder) {
  if (folder.empty()) return {};
  const std::string path = support::host_ini_files().value(folder + "setup.ini", "setup", "journal", {}, longest_path);
  if (path.empty()) return {};
  return support::host_file_system().host_path(is_relative(path) ? folder + path : path);
}

}  // namespace

std::unique_ptr<support::ErrorJournal> open_journal(std::string_view program, const std::optional<std::string>& file,
                                                    const std::string& folder) {
  const std::string path = file && !file->empty() ? *file : path_in_settings(folder);
  if (path.empty()) return nullptr;
  return std::make_unique<support::ErrorJournal>(
      path, support::JournalProgram{"vantrix", FIRSTSTEPS_VERSION, std::string(program), folder + "setup.ini"});
}

}  // namespace console
