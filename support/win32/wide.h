// UTF-8 inside, UTF-16 at the W calls, CP1252 at the A calls.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace support {

std::wstring wide(std::string_view utf8);
std::string narrow(std::wstring_view text);

/// A path for a W call: absolute, so that no call looks for it in a folder of its own.
std::wstring wide_path(std::string_view path);

/// The same for an A call, in its short form where the long one does not fit CP1252; nothing where neither does.
std::optional<std::string> ansi_path(std::string_view path);

}  // namespace support
