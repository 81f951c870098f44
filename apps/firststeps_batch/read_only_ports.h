// Ports for a rehearsal: everything can be read, nothing can be written. A rehearsal walks the pages before the real
// run does, so that a wrong answer is found before anything is touched.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "database/engine/engine.h"
#include "support/file_system.h"
#include "support/ini.h"
#include "support/registry.h"

namespace firststeps_batch {

// Each port reads through the port that it was given, which must outlive it. Writing fails as on a read-only disk.
std::unique_ptr<support::Registry> read_only(const support::Registry& registry);
std::unique_ptr<support::IniFiles> read_only(const support::IniFiles& files);
std::unique_ptr<support::FileSystem> read_only(const support::FileSystem& files);

using OpenEngine = std::function<std::unique_ptr<engine::Engine>(std::string_view identifier)>;
/// Creating a database raises 3027; databases are opened read-only.
OpenEngine read_only(OpenEngine open_engine);

}  // namespace firststeps_batch
