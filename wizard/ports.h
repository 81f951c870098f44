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
#include "support/registry.h"
#include "wizard/user_port.h"

namespace wizard {

/// The pointers that may be null say so; what they point to outlives the run.
struct Ports {
  support::Registry* registry = nullptr;
  support::IniFiles* ini = nullptr;
  support::FileSystem* files = nullptr;
  UserPort* user = nullptr;
  /// Shows the long work of the database; null where it is not to be shown.
  database::Progress* progress = nullptr;
  /// Creates the language component for a class name ("X.LanguageDLL"); null where it cannot be created.
  std::function<std::shared_ptr<const support::LanguageComponent>(std::string_view class_name)> create_language;
  // As in the environment of the database procedures. Empty: the machine's own engine, no copies, the machine's clock.
  decltype(database::Environment::open_engine) open_engine;
  decltype(database::Environment::readable_copy) readable_copy;
  decltype(database::Environment::now) now;
  /// The program's own folder, a Windows path, with or without a trailing backslash.
  std::string own_folder;
  /// The folder of the user's local application data, a Windows path; empty where there is none.
  std::string local_data;
};

}  // namespace wizard
