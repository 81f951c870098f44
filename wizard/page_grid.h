// The places of controls on a page: a heading, a sentence, and below them fields in lines. A translated text may be 40
// % longer and wraps then, so a label is two lines high and as wide as its column. Everything lies on a grid of 60
// twips (4 pixels at 100 %).
#pragma once

#include <cstdint>
#include <string_view>

#include "wizard/page.h"

namespace wizard::grid {

using form::Bounds;

inline constexpr Bounds page{2280, 0, 6600, 5520};
inline constexpr Bounds heading_bounds{120, 120, 6360, 480};
inline constexpr Bounds purpose_bounds{120, 660, 6360, 720};
inline constexpr std::int32_t content_top = 1500, line_pitch = 540;

constexpr form::ControlRow heading(std::string_view caption, std::string_view tag, Bounds bounds = heading_bounds) {
  return {"lblHeading", of_page, form::Kind::Label, {}, bounds, caption, tag};
}
constexpr form::ControlRow purpose(std::string_view caption, std::string_view tag) {
  return {"lblPurpose", of_page, form::Kind::Label, {}, purpose_bounds, caption, tag};
}

/// The button at the bottom that explains why the page asks for its data.
constexpr form::ControlRow why() {
  return {"cmdWhy", of_page, form::Kind::Button, {}, {3300, 5080, 3180, 420}, "Warum &fragen wir das?", "L4922"};
}

constexpr std::int32_t line(int n) { return content_top + n * line_pitch; }
constexpr Bounds label(int n, std::int32_t width = 1740) { return {120, line(n) + 45, width, 510}; }
constexpr Bounds field(int n, std::int32_t left = 1920, std::int32_t width = 4560) {
  return {left, line(n), width, 330};
}

/// For long labels: the width of their column, and the left end of the fields beside it.
inline constexpr std::int32_t wide_label = 3480, beside_wide_label = 3660;
constexpr Bounds value_label(int n) { return label(n, wide_label); }
constexpr Bounds value_field(int n) { return field(n, beside_wide_label, 1200); }
constexpr Bounds unit(int n) { return {4980, line(n) + 45, 1200, 300}; }

/// An option inside a group box.
constexpr Bounds option(int n) { return {180, 300 + n * line_pitch, 6000, 480}; }
constexpr Bounds group(int options) { return {120, content_top, 6360, 360 + options * line_pitch}; }

}  // namespace wizard::grid
