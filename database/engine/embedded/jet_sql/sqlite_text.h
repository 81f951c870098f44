// Names and texts as the text of a SQLite statement holds them.
#pragma once

#include <string>
#include <string_view>

namespace engine::embedded {

/// "name", a quote inside written twice.
std::string quoted_name(std::string_view name);
/// 'text', a quote inside written twice. Precondition: no NUL, which would end the statement.
std::string quoted_text(std::string_view text);

}  // namespace engine::embedded
