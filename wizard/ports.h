// Everything outside the wizard that a run touches.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "database/environment.h"
#include "support/file_system.h"
#include "support/ini.h"
#include "support/language.h"
#include "support/registry.h"
#include "wizard/user_port.h"

namespace wizard {

/// A pointer may be null only if its comment says so. The objects must outlive the run.
struct Ports {
  support::Registry* registry = nullptr;
  support::IniFiles* ini = nullptr;
  support::FileSystem* files = nullptr;
  UserPort* user = nullptr;
  /// Shows long work of the database; null if it shall not be shown.
  database::Progress* progress = nullptr;
  /// Creates the language component for a class name ("X.LanguageDLL"); null if it cannot be created.
  std::function<std::shared_ptr<const support::LanguageComponent>(std::string_view class_name)> create_language;
  // The same as in the environment of the database procedures. If empty: the machine's own engine, no copies, the
  // machine's clock.
  decltype(database::Environment::open_engine) open_engine;
  decltype(database::Environment::readable_copy) readable_copy;
  decltype(database::Environment::now) now;
  /// The program's own folder, a Windows path, with or without a trailing backslash.
  std::string own_folder;
  /// The folder of the user's local application data, a Windows path; empty if there is none.
  std::string local_data;
};

}  // namespace wizard
