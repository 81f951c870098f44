#include "wizard/start_up.h"

#include "support/encoding.h"
#include "support/error.h"
#include "support/text.h"
#include "support/windows_path.h"
#include "wizard/shared_index.h"

namespace wizard {

namespace {

using support::RootKey;

enum class Roots { MachineThenUser, Machine, User };

/// The value under a later root replaces the one under an earlier root.
std::string read_value(const Ports& ports, Roots roots, std::string_view key, std::string_view name,
                       std::string value) {
  if (roots != Roots::User) support::ReadRegValue(*ports.registry, RootKey::LocalMachine, key, name, value);
  if (roots != Roots::Machine) support::ReadRegValue(*ports.registry, RootKey::CurrentUser, key, name, value);
  return support::trim(value);
}

void discover_font(Context& context) {
  InstallationConfig& config = context.config;
  // RegKey is not known yet, so the value below the root keys themselves is read.
  config.DefaultFont =
      read_value(context.ports, Roots::MachineThenUser, config.RegKey, "DefaultFont", config.DefaultFont);
  config.DefaultFont = context.ini_value(config.own_folder + "setup.ini", "setup", "font", config.DefaultFont);
}

std::string installation_name(const Ports& ports, std::string_view command_line) {
  constexpr std::size_t buffer_size = 101;  // 100 characters and the NUL
  if (std::string name = support::trim(command_line_field(command_line, 1)); !name.empty()) return name;
  const std::string name =
      ports.ini->value(support::with_backslash(ports.own_folder) + "vantrix.ini", "setup", "RegPath", "", buffer_size);
  return name.substr(0, name.find('\0'));
}

std::string registry_key(std::string_view installation) {
  return "SOFTWARE\\Lumoraquant\\" + std::string(installation);
}

void discover_names(const Ports& ports, InstallationConfig& config, std::string_view command_line) {
  config.RegPath = installation_name(ports, command_line);
  config.ProEdition = support::to_upper(config.RegPath).find("PRO") != std::string::npos;
  config.RegKey = registry_key(config.RegPath);
  config.ProfilesKey = config.RegKey + "\\Profiles\\";
}

void discover_texts(const Ports& ports, InstallationConfig& config) {
  config.LanguageDLL = read_value(ports, Roots::MachineThenUser, config.RegKey, "LanguageDLL", "");
  config.LanguageObject = ports.create_language(config.LanguageDLL + ".LanguageDLL");
}

struct PathRow {
  std::string InstallationConfig::*member;
  std::string_view value_name;
  std::string_view default_below_path;  ///< appended to `Path`
  bool is_folder;                       ///< a backslash is added to the registry's value if it has none
};

constexpr PathRow path_rows[] = {
    {&InstallationConfig::ImportDir, "ImportDir", "\\data\\incoming", true},
    {&InstallationConfig::DataDir, "DataDir", "\\data\\", false},
    {&InstallationConfig::ModulesDir, "ModulesDir", "\\modules", true},
    {&InstallationConfig::LookupDB, "LookupDB", "\\defs.mdb", false},
    {&InstallationConfig::PatientData, "PatientData", "\\patients\\", false},
};

void discover_paths(const Ports& ports, InstallationConfig& config) {
  config.Path = support::with_backslash(
      read_value(ports, Roots::MachineThenUser, config.RegKey, "Path", support::with_backslash(config.own_folder)));
  support::RemoveSlashes(config.Path);
  for (const PathRow& row : path_rows) {
    std::string path = read_value(ports, Roots::MachineThenUser, config.RegKey, row.value_name,
                                  config.Path + std::string(row.default_below_path));
    if (row.is_folder) path = support::with_backslash(std::move(path));
    support::RemoveSlashes(path);
    config.*row.member = std::move(path);
  }
  config.IndexDB = index_in(config.PatientData);
}

void discover_product_name(const Ports& ports, InstallationConfig& config) {
  config.Productname = read_value(ports, Roots::Machine, config.RegKey + "\\Setup", "Productname", "");
  if (config.Productname.empty()) config.Productname = "vantrix";
}

void discover_product(const Ports& ports, InstallationConfig& config) {
  const std::string port_number = read_value(ports, Roots::User, config.RegKey, "COM", "1");
  support::Procedure{"wizard!COM"}.step([&] { config.COM = engine::to_int16(port_number); });
  config.Helpfile = read_value(ports, Roots::Machine, config.RegKey, "Helpfile", "");
  support::RemoveSlashes(config.Helpfile);
  discover_product_name(ports, config);
  config.DBPassword.clear();
  config.Manual = read_value(ports, Roots::Machine, config.RegKey, "Manual", "");
  support::RemoveSlashes(config.Manual);
  config.User = read_value(ports, Roots::User, config.RegKey, "User", "default");
}

void discover_current_database(Context& context, std::string_view command_line) {
  InstallationConfig& config = context.config;
  config.CurrentDB = support::trim(context.ini_value(config.Path + "setup.ini", "setup", "CurrentDB"));
  if (config.CurrentDB.empty())
    config.CurrentDB = support::join_path(config.PatientData, support::trim(command_line_field(command_line, 2)));
  support::RemoveSlashes(config.CurrentDB);
  if (!support::file_test(*context.ports.files, config.CurrentDB)) config.CurrentDB.clear();
}

}  // namespace

std::string command_line_field(std::string_view command_line, int field) {
  if (field == 0) return std::string(command_line);
  for (int n = 1;; ++n) {
    const auto bar = command_line.find('|');
    if (n == field) return std::string(command_line.substr(0, bar));
    if (bar == std::string_view::npos) return {};
    command_line.remove_prefix(bar + 1);
  }
}

std::string installation_key(const Ports& ports, std::string_view command_line) {
  std::string name;
  support::Procedure{"wizard!InstallationKey"}.step([&] { name = installation_name(ports, command_line); });
  return name.empty() ? name : registry_key(name);
}

InstallationConfig known_installation(const Ports& ports, std::string_view command_line) {
  InstallationConfig config;
  support::Procedure procedure{"wizard!KnownInstallation"};
  procedure.step([&] { discover_names(ports, config, command_line); });
  procedure.step([&] { discover_texts(ports, config); });
  procedure.step([&] { discover_product_name(ports, config); });
  return config;
}

bool discover_installation(Context& context, std::string_view command_line) {
  support::Procedure procedure{"wizard!Discover"};
  const Ports& ports = context.ports;
  InstallationConfig& config = context.config;
  config.own_folder = support::with_backslash(ports.own_folder);
  procedure.step([&] { discover_font(context); });
  procedure.step([&] { discover_names(ports, config, command_line); });
  if (config.RegPath.empty() && command_line.empty()) return false;
  procedure.step([&] { discover_texts(ports, config); });
  procedure.step([&] { discover_paths(ports, config); });
  procedure.step([&] {
    if (config.ProEdition) provide_index_database(context);
  });
  procedure.step([&] { discover_product(ports, config); });
  procedure.step([&] { discover_current_database(context, command_line); });
  return true;
}

}  // namespace wizard
