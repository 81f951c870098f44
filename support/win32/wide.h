// Conversions at the system's calls: UTF-8 inside the program, UTF-16 for W calls, CP1252 for A calls.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace support {

std::wstring wide(std::string_view utf8);
std::string narrow(std::wstring_view text);

/// A path for a W call. It is absolute, because some calls look for a relative one in folders of their own.
std::wstring wide_path(std::string_view path);

/// The same for an A call, in its short form if the long one does not fit CP1252; nothing if neither fits.
std::optional<std::string> ansi_path(std::string_view path);

}  // namespace support
