#include "apps/firststeps_batch/installation.h"

#include "database/open_database.h"
#include "support/host.h"
#include "support/host_path.h"
#include "support/windows_path.h"

namespace firststeps_batch {
namespace {

constexpr std::string_view settings_files[] = {"vantrix.ini", "setup.ini", "pelmar.ini", "home.ini", "schemes.txt"};
constexpr std::uint64_t settings_limit = 4 << 20;

void check_settings_file(const std::string& path) {
  const support::FileSystem& files = support::host_file_system();
  const std::optional<std::uint64_t> size = files.file_size(path);
  if (!size) return;
  const std::string name = files.host_path(path);
  if (*size > settings_limit) throw console::InputError(name + ": too large for a settings file (more than 4 MiB).");
  const std::optional<std::string> content = files.read(path, settings_limit);
  if (!content) throw console::InputError(name + ": the file cannot be read.");
  if (content->find('\0') != std::string::npos) throw console::InputError(name + ": this is no text file.");
}

void check_settings_files(const std::string& folder) {
  for (const std::string_view name : settings_files) check_settings_file(folder + std::string(name));
}

void check_folder(const std::string& folder) {
  std::error_code problem;
  const std::filesystem::directory_iterator listing(support::std_path(folder), problem);
  if (problem) throw console::InputError("The program folder " + folder + " cannot be read: " + problem.message());
}

std::unique_ptr<support::Registry> open_registry(const std::string& hive) {
  try {
    return support::host_registry(hive);
  } catch (const support::RuntimeError& error) {
    throw console::InputError(error.what());
  }
}

}  // namespace

Installation find_installation(const console::Arguments& arguments, const console::Console& console) {
  const support::FileSystem& files = support::host_file_system();
  const std::string folder = arguments.value("--program-dir").value_or(console.program_folder);
  Installation installation;
  installation.own_folder = support::with_backslash(files.windows_path(folder));
  installation.program_folder = support::with_backslash(files.windows_path(console.program_folder));
  check_folder(folder);
  check_settings_files(installation.own_folder);
  installation.registry = open_registry(arguments.value("--registry").value_or(default_hive(folder)));
  return installation;
}

void check_configuration(const wizard::InstallationConfig& config) {
  check_settings_files(config.Path);
  if (config.CurrentDB.empty()) return;
  database::Environment environment;
  environment.password = config.DBPassword;
  try {
    database::open_patient_database(environment, config.CurrentDB, true);
  } catch (const support::RuntimeError& failure) {
    const std::string name = support::host_file_system().host_path(config.CurrentDB);
    throw support::RuntimeError(failure.number(), name + ": " + failure.what());
  }
}

}  // namespace firststeps_batch
