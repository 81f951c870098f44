// The wizard's form: the controls that all pages share, and each page's controls in their container `contstep`.
#pragma once

#include <cstdint>

#include "wizard/form/form.h"

namespace wizard {

/// Inner size of the window, in twips.
inline constexpr form::Bounds form_bounds{0, 0, 9000, 6300};
/// Lower end of the pages, where the bar with the buttons begins, in twips.
inline constexpr std::int32_t page_bottom = 5520;

/// Height of the strip below a chart's thumbnail for its check mark and title, in twips. The bounds of an `optThumb`
/// are those of the thumbnail; the strip is added to them.
inline constexpr std::int32_t chart_title_height = 360;
inline constexpr int charts_in_row = 3;
/// Twips between two rows of charts.
inline constexpr std::int32_t chart_row_gap = 60;

/// Adds all controls, each with its bounds, its German caption and the number of its text in the tag. Sets the form's
/// caption and tag, and limits the texts that can be typed to what the database can hold.
void build_form(form::Form& form);

}  // namespace wizard
