// All pages of the wizard, in the order of the default steps. Each is defined in its own source; its position in the
// list is the index of its container `contstep`. Also what moves on a page while it is shown.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "wizard/page.h"

namespace wizard {

std::span<const Page* const> all_pages() noexcept;

/// The page of a step. The step is compared with the pages' tags without regard to case and without its "-". Null if no
/// page has this name.
const Page* find_page(std::string_view step);

/// The page's position in the list.
int page_index(const Page& page);

/// The default steps of an edition, separated by "|".
std::string default_steps(bool professional);

extern const Page intro_page, folder_page, unit_page, patient_page, insulin_page, drug_page, glucose_target_page,
    pressure_target_page, chart_page, entry_page, style_page, scheme_page, sidebar_page, start_page, navigation_tip,
    splits_tip, statistics_tip, summary_page;

inline constexpr const Page* pages_in_order[] = {
    &intro_page,          &folder_page,          &unit_page,      &patient_page, &insulin_page,   &drug_page,
    &glucose_target_page, &pressure_target_page, &chart_page,     &entry_page,   &style_page,     &scheme_page,
    &sidebar_page,        &start_page,           &navigation_tip, &splits_tip,   &statistics_tip, &summary_page,
};

/// Starts `Timer1` with the page's interval. The timer stays stopped if nothing moves, or if there is no page (null).
void start_animation(form::Form& form, const Page* page);

/// Handles one tick; does nothing if nothing moves.
void advance_animation(Context& context, const Page* page);

/// Shows the picture if it is hidden, and hides it if it is shown.
void blink(form::Form& form, std::string_view picture);

}  // namespace wizard
