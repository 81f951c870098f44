// The adapters of the platform that this program was built for. Programs get them here and pass them on as ports, so
// that nothing else depends on the platform.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "support/file_system.h"
#include "support/ini.h"
#include "support/registry.h"
#include "support/user_locale.h"

namespace support {

/// The registry. If a hive file (a host path, see hive_registry.h) is named, it is that file. Otherwise it is the
/// machine's own registry on Windows, and elsewhere the hive "firststeps/registry.reg" in the user's configuration
/// folder. Raises what open_hive raises.
std::unique_ptr<Registry> host_registry(std::string_view hive_path = {});

/// The machine's ini files.
IniFiles& host_ini_files();

/// The user's locale on Windows; German elsewhere.
UserLocale host_locale();

/// %LOCALAPPDATA% on Windows; empty elsewhere.
std::string host_local_data();

}  // namespace support
