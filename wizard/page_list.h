// All pages of the wizard, in the order of the default steps. A page's place in the list is the index of its container
// `contstep`.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "wizard/page.h"

namespace wizard {

std::span<const Page* const> all_pages() noexcept;

/// The page of a step: its tag in whatever case, whatever "-" is in the step. Null where no page has this name.
const Page* find_page(std::string_view step);

/// The page's place in the list.
int page_index(const Page& page);

/// The default steps of an edition, separated by "|".
std::string default_steps(bool professional);

}  // namespace wizard
