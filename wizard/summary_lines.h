// What lines of the last page have in common.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wizard/choices.h"
#include "wizard/context.h"

namespace wizard {

inline constexpr long nothing_chosen = 4850;  ///< text that stands where nothing is given

/// The names separated by commas, empty ones left out; the text for "nothing" where none is left.
std::string named_list(const Context& context, const std::vector<std::string>& names);

/// A line with the caption of the option that will be stored.
std::vector<std::string> option_line(const Context& context, const Choices& choices, long number,
                                     std::string_view controls);

/// A caption as it is read: without the mark of its access key, the colon at its end, and the mark of what is required.
std::string plain_caption(std::string caption);

}  // namespace wizard
