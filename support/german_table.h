// The German text table that is built into every program.
#pragma once

#include <string_view>

namespace support {

/// The content of "texts/de.ini".
extern const std::string_view german_table;

}  // namespace support
