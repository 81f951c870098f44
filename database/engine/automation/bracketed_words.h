// Names that an installed engine may take for words of its language.
#pragma once

#include <string>
#include <string_view>

namespace engine::automation {

/// Returns the statement with brackets around `index` and `desc` wherever they stand without brackets in the place of a
/// name. Texts, sort directions and parts of definitions stay as they are.
std::string with_bracketed_words(std::string_view statement);

}  // namespace engine::automation
