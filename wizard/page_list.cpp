#include "wizard/page_list.h"

#include <algorithm>

#include "support/encoding.h"
#include "wizard/page_rows.h"

namespace wizard {

std::span<const Page* const> all_pages() noexcept { return pages_in_order; }

const Page* find_page(std::string_view step) {
  std::string name(step);
  std::erase(name, '-');
  const auto match = std::ranges::find_if(
      pages_in_order, [&](const Page* page) { return support::equal_ignoring_case(page->tag, name); });
  return match == std::end(pages_in_order) ? nullptr : *match;
}

int page_index(const Page& page) {
  return static_cast<int>(std::ranges::find(pages_in_order, &page) - std::begin(pages_in_order));
}

std::string default_steps(bool professional) {
  const auto edition = static_cast<unsigned>(professional ? Edition::Professional : Edition::Standard);
  std::string steps;
  for (const Page* page : pages_in_order) {
    if ((static_cast<unsigned>(page->shown_in) & edition) == 0) continue;
    steps += (steps.empty() ? "" : "|") + std::string(page->step.empty() ? page->tag : page->step);
  }
  return steps;
}

}  // namespace wizard
