// Pictures of characters: "@@@", "!&&&", ">", "@@@;\-".
#pragma once

#include <string>
#include <string_view>

#include "database/engine/format/format_picture.h"

namespace engine::pictures {

/// A second section is for the empty text and Null. Raises error_picture for what it does not know, and for a text that
/// is longer than placeholders with signs between them: where the rest of it would stand is not said.
std::string print_text(std::string_view text, const Picture& picture);

}  // namespace engine::pictures
