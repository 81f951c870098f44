#include "wizard/page_list.h"

#include <algorithm>

#include "support/encoding.h"
#include "wizard/page_rows.h"

namespace wizard {

namespace {

constexpr const Page* pages_in_order[] = {
    &intro_page,          &folder_page,          &unit_page,      &patient_page, &insulin_page,   &drug_page,
    &glucose_target_page, &pressure_target_page, &chart_page,     &entry_page,   &style_page,     &scheme_page,
    &sidebar_page,        &start_page,           &navigation_tip, &splits_tip,   &statistics_tip, &summary_page,
};

}  // namespace

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
