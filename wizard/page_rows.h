// The rows of all pages: each is defined in the file of its page. Their order here is that of the default steps, and a
// page's place the index of its container.
#pragma once

#include "wizard/page.h"

namespace wizard {

extern const Page intro_page, folder_page, unit_page, patient_page, insulin_page, drug_page, glucose_target_page,
    pressure_target_page, chart_page, entry_page, style_page, scheme_page, sidebar_page, start_page, navigation_tip,
    splits_tip, statistics_tip, summary_page;

inline constexpr const Page* pages_in_order[] = {
    &intro_page,          &folder_page,          &unit_page,      &patient_page, &insulin_page,   &drug_page,
    &glucose_target_page, &pressure_target_page, &chart_page,     &entry_page,   &style_page,     &scheme_page,
    &sidebar_page,        &start_page,           &navigation_tip, &splits_tip,   &statistics_tip, &summary_page,
};

}  // namespace wizard
