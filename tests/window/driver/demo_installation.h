// A copy of the demo installation in a folder of its own, with a hive file for its registry, and functions that show
// what a run has left there.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "database/patient.h"
#include "database/settings.h"
#include "support/registry.h"
#include "tests/support/temporary_folder.h"

namespace window_driver {

inline constexpr std::string_view installation_key = "SOFTWARE\\Lumoraquant\\vantrix";
inline constexpr std::string_view user_key = "SOFTWARE\\Lumoraquant\\vantrix\\Profiles\\default\\User Configuration";

class DemoInstallation {
 public:
  /// Throws std::runtime_error if the demo has not been built.
  DemoInstallation();

  /// Windows path of a name in the installation.
  std::string path(std::string_view name) const { return folder_.windows(name); }
  /// The arguments for the wizard's program: options, then its own command line.
  std::string arguments(std::string_view command_line = "vantrix") const;

  std::string ini(std::string_view file, std::string_view section, std::string_view key) const;
  void set_ini(std::string_view file, std::string_view section, std::string_view key, std::string_view value) const;
  /// A value of the hive, under the current user; empty if there is none.
  std::string value(std::string_view key, std::string_view name) const;
  void set_value(support::RootKey root, std::string_view key, std::string_view name, std::string_view value) const;

  database::PatientRecord patient(std::string_view database) const;
  database::SettingsRecord settings(std::string_view database) const;

  using Files = std::map<std::string, std::string>;
  /// Every file with its content.
  Files everything() const;
  /// Names of the files that are new, missing or changed.
  std::vector<std::string> changed_since(const Files& before) const;

 private:
  support::testing::TemporaryFolder folder_;
};

}  // namespace window_driver
