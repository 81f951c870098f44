// Windows paths taken apart and put together. None raises.
#pragma once

#include <string>
#include <string_view>

namespace support {

/// Reduces every run of backslashes to one; a path that begins with a backslash begins with two afterwards.
void RemoveSlashes(std::string& path);

enum class PathPart { Drive = 0, Folder = 1, FileName = 2, Shortened = 3 };

/// Part of a Windows path; any other number gives the empty text. The folder keeps its trailing backslash.
std::string ExtractFromPath(std::string_view path, int part);

/// The folder with a backslash at its end, whether or not it brings one.
std::string with_backslash(std::string folder);

/// A folder and a name in it, with one backslash between them whether or not the folder brings one. Runs of backslashes
/// inside become one.
std::string join_path(std::string_view folder, std::string_view name);

}  // namespace support
