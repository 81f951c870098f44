// Windows paths put together.
#pragma once

#include <string>
#include <string_view>

namespace wizard {

/// The folder with a backslash at its end, whether or not it brings one.
std::string with_backslash(std::string folder);

/// A folder and a name in it, with one backslash between them whether or not the folder brings one. Runs of backslashes
/// inside become one.
std::string join_path(std::string_view folder, std::string_view name);

}  // namespace wizard
