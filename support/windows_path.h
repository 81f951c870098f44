// Takes Windows paths apart and puts them together. Nothing here raises. Also finds the virtual store: when a program
// without a manifest writes into a protected folder, Windows writes into a copy of the user's own instead, which hides
// the real file from that program alone.
#pragma once

#include <string>
#include <string_view>

#include "support/file_system.h"

namespace support {

/// Reduces every run of backslashes to one; a path that begins with a backslash begins with two afterwards.
void RemoveSlashes(std::string& path);

enum class PathPart { Drive = 0, Folder = 1, FileName = 2, Shortened = 3 };

/// Part of a Windows path; any other number gives the empty text. The folder keeps its trailing backslash.
std::string ExtractFromPath(std::string_view path, int part);

/// The folder with one backslash at its end.
std::string with_backslash(std::string folder);

/// A folder and a name in it, with one backslash between them. Runs of backslashes inside become one.
std::string join_path(std::string_view folder, std::string_view name);

/// The folder that holds the user's own copies of files of this folder (a Windows path on drive C); empty if there is
/// none. `local_data` is the folder of the user's local application data, see host_local_data().
std::string virtual_store_twin(const FileSystem& files, std::string_view local_data, std::string_view folder);

}  // namespace support
