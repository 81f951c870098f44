// Names that an installed engine may take for words of its language.
#pragma once

#include <string>
#include <string_view>

namespace engine::automation {

/// The statement with brackets around `index` and `desc` wherever they stand unbracketed in the place of a name: not
/// where they are the direction of a sort or part of a definition, nor in texts. The same text where there is none.
std::string with_bracketed_words(std::string_view statement);

}  // namespace engine::automation
