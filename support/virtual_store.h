// Where Windows leads what a program without a manifest writes into a protected folder: a copy of the user's own, which
// hides the real file from that program and nobody else.
#pragma once

#include <string>
#include <string_view>

#include "support/file_system.h"

namespace support {

/// The folder that holds the user's own copies of files of this folder (a Windows path on drive C); empty where there
/// is none. `local_data` is the folder of the user's local application data, as host_local_data() gives it.
std::string virtual_store_twin(const FileSystem& files, std::string_view local_data, std::string_view folder);

/// %LOCALAPPDATA% on Windows; empty elsewhere.
std::string host_local_data();

}  // namespace support
