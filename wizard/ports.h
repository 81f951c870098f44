// Everything outside that a run of the wizard touches.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "database/environment.h"
#include "support/file_system.h"
#include "support/ini.h"
#include "support/language.h"
#include "support/registry_funktions.h"
#include "wizard/user_port.h"

namespace wizard {

struct Ports {
  support::Registry* registry = nullptr;
  support::IniFiles* ini = nullptr;
  support::FileSystem* files = nullptr;
  UserPort* user = nullptr;
  /// Shows the long work of the database; null where it is not to be shown.
  database::Progress* progress = nullptr;
  /// Creates the language component for a class name ("X.LanguageDLL"); null where it cannot be created.
  std::function<std::shared_ptr<const support::LanguageComponent>(std::string_view class_name)> create_language;
  std::function<std::unique_ptr<engine::Engine>(std::string_view identifier)> open_engine;
  /// As in the environment of the database procedures.
  decltype(database::Environment::readable_copy) readable_copy;
  std::function<engine::Date()> now;
  /// The program's own folder, a Windows path, with or without a trailing backslash.
  std::string own_folder;
};

}  // namespace wizard
