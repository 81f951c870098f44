// A file that an argument names, read whole.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace console {

/// The content of the file at a host path. Raises InputError, which begins with `what` ("The script") and the path and
/// says which it is: a name too long, a missing folder or file, a folder, more than `limit` bytes (in words:
/// `limit_text`), or that it cannot be read.
std::string read_input_file(std::string_view what, const std::string& host_path, std::uint64_t limit,
                            std::string_view limit_text);

}  // namespace console
