// All pages of the wizard, in the order of the default steps. Each is defined in the file of its page; its place in the
// list is the index of its container `contstep`. What moves on a page while it is shown.
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

extern const Page intro_page, folder_page, unit_page, patient_page, insulin_page, drug_page, glucose_target_page,
    pressure_target_page, chart_page, entry_page, style_page, scheme_page, sidebar_page, start_page, navigation_tip,
    splits_tip, statistics_tip, summary_page;

inline constexpr const Page* pages_in_order[] = {
    &intro_page,          &folder_page,          &unit_page,      &patient_page, &insulin_page,   &drug_page,
    &glucose_target_page, &pressure_target_page, &chart_page,     &entry_page,   &style_page,     &scheme_page,
    &sidebar_page,        &start_page,           &navigation_tip, &splits_tip,   &statistics_tip, &summary_page,
};

/// Starts `Timer1` with the page's interval, or leaves it stopped where nothing moves or there is no page (null).
void start_animation(form::Form& form, const Page* page);

/// One tick; nothing where nothing moves.
void advance_animation(Context& context, const Page* page);

/// Shows the picture, or hides it where it is shown.
void blink(form::Form& form, std::string_view picture);

}  // namespace wizard
