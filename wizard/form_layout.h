// The wizard's form as tables: every control with its place, German placeholder caption and text number. One table per
// page, one for what all pages share.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "wizard/form/form.h"

namespace wizard {

/// Inner size of the window, in twips.
inline constexpr form::Bounds form_bounds{0, 0, 9000, 6300};
/// Where the pages end and the bar with the buttons begins.
inline constexpr std::int32_t page_bottom = 5520;

/// Room below a chart's thumbnail for its check mark and title, in twips. The bounds of an `optThumb` are those of the
/// thumbnail; the strip comes on top of them.
inline constexpr std::int32_t chart_title_height = 360;

/// Tags of the page containers `contstep`, by index. The heading of page n is `lblHeading(n)` (`Label2` on the first),
/// the sentence below it `lblPurpose(n)`.
inline constexpr auto page_tags = std::to_array<std::string_view>({
    "Intro",
    "netpath",
    "Maßeinheit",
    "PatDat",
    "Insulin",
    "Medikamente",
    "Therapie_BZ",
    "Therapie_BP",
    "Pics",
    "Eingabe",
    "Darstellung",
    "Schema",
    "sidebar",
    "start",
    "tip_navbar",
    "tip_splits",
    "tip_stats",
    "Fertig",
});

/// Adds all controls, sets the form's caption and tag, and limits what can be typed to what the database can hold.
void build_form(form::Form& form);

}  // namespace wizard
