// A copy of a closed database file.
#pragma once

#include <string_view>

namespace engine::automation {

/// Copies the file while nobody writes to it. On failure no target is left: 3045 where the source is in use, 3204 where
/// the target is there, 3044 where its folder is not, 3051 where rights are missing, 3043 where reading or writing
/// fails.
void copy_database_file(std::string_view source, std::string_view target);

}  // namespace engine::automation
