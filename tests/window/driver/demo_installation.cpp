#include "tests/window/driver/demo_installation.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>

#include "support/hive_registry.h"
#include "support/host.h"
#include "tests/support/file_content.h"

namespace window_driver {
namespace {

constexpr std::string_view hive = "registry.reg";
constexpr std::size_t buffer = 4096;

database::Environment environment() {
  database::Environment environment;
  environment.password = database::default_password;
  return environment;
}

}  // namespace

DemoInstallation::DemoInstallation() {
  std::error_code failed;
  std::filesystem::copy(DEMO_DIR, std::filesystem::path(folder_.windows()),
                        std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing,
                        failed);
  if (failed) throw std::runtime_error("no demo installation in " DEMO_DIR ": tools/build native demo makes it");
}

std::string DemoInstallation::arguments(std::string_view command_line) const {
  return "--program-dir \"" + folder_.windows() + "\" --registry \"" + path(hive) + "\" --report \"" +
         path("report.txt") + "\" " + std::string(command_line);
}

std::string DemoInstallation::ini(std::string_view file, std::string_view section, std::string_view key) const {
  return support::host_ini_files().value(path(file), section, key, "", buffer);
}

void DemoInstallation::set_ini(std::string_view file, std::string_view section, std::string_view key,
                               std::string_view value) const {
  if (!support::host_ini_files().write(path(file), section, key, value))
    throw std::runtime_error("cannot be written: " + path(file));
}

std::string DemoInstallation::value(std::string_view key, std::string_view name) const {
  std::string found;
  ReadRegValue(*support::open_hive(path(hive)), support::RootKey::CurrentUser, key, name, found);
  return found;
}

void DemoInstallation::set_value(support::RootKey root, std::string_view key, std::string_view name,
                                 std::string_view value) const {
  if (!WriteRegString(*support::open_hive(path(hive)), root, key, name, value))
    throw std::runtime_error("cannot be written: " + path(hive));
}

database::PatientRecord DemoInstallation::patient(std::string_view database) const {
  database::PatientRecord record;
  if (!db_GetPatient(environment(), std::string(database), 0, record))
    throw std::runtime_error("no patient in " + std::string(database));
  return record;
}

database::SettingsRecord DemoInstallation::settings(std::string_view database) const {
  database::SettingsRecord record;
  if (!db_GetSettings(environment(), std::string(database), record))
    throw std::runtime_error("no settings in " + std::string(database));
  return record;
}

DemoInstallation::Files DemoInstallation::everything() const {
  Files files;
  const std::filesystem::path root(folder_.windows());
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.is_regular_file())
      files[entry.path().lexically_relative(root).generic_string()] =
          support::testing::content_of(entry.path()).value_or("");
  }
  return files;
}

std::vector<std::string> DemoInstallation::changed_since(const Files& before) const {
  const Files now = everything();
  std::vector<Files::value_type> changed;
  std::set_symmetric_difference(before.begin(), before.end(), now.begin(), now.end(), std::back_inserter(changed));
  std::set<std::string> names;
  for (const auto& [name, bytes] : changed) names.insert(name);
  return {names.begin(), names.end()};
}

}  // namespace window_driver
