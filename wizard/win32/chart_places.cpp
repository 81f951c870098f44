#include "wizard/win32/chart_places.h"

#include <algorithm>

#include "wizard/form_layout.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

// Pixels at 96 to the inch.
constexpr int title_room = 6, row_gap = 6;

}  // namespace

ChartPlaces::ChartPlaces(const form::Form& form, const TextSizes& sizes, SIZE frame)
    : slide_(form.at("picSlide")),
      first_(form.at("optThumb", 0)),
      frame_(frame),
      bar_width_(scroll_bar_width(sizes.dpi())),
      title_height_(title_lines(sizes) * sizes.line(first_) + sizes.scaled(title_room)),
      row_gap_(sizes.scaled(row_gap)) {}

/// A title fits one line of a chart that is as wide as in the form's design.
int ChartPlaces::title_lines(const TextSizes& sizes) const {
  return across(first_.bounds().width) < sizes.with_text(pixels(first_.bounds().width, USER_DEFAULT_SCREEN_DPI)) ? 2
                                                                                                                 : 1;
}

int ChartPlaces::across(int twips) const {
  return MulDiv(twips, std::max<int>(frame_.cx - bar_width_, 1), slide_.bounds().width);
}

int ChartPlaces::down(int twips) const {
  const int row = first_.bounds().height + chart_title_height + chart_row_gap;
  return MulDiv(twips, across(first_.bounds().height) + title_height_ + row_gap_, row);
}

RECT ChartPlaces::slide() const {
  const int top = down(slide_.bounds().top), height = std::max<int>(down(slide_.bounds().height), frame_.cy);
  return {0, top, frame_.cx - bar_width_, top + height};
}

RECT ChartPlaces::bar() const { return {frame_.cx - bar_width_, 0, frame_.cx, frame_.cy}; }

RECT ChartPlaces::chart(const form::Control& chart) const {
  const form::Bounds& bounds = chart.bounds();
  const int top = down(bounds.top);
  return {across(bounds.left), top, across(bounds.left + bounds.width), top + across(bounds.height) + title_height_};
}

int ChartPlaces::visible() const {
  const int row = first_.bounds().height + chart_title_height + chart_row_gap;
  return MulDiv(frame_.cy, row, std::max(down(row), 1));
}

int ChartPlaces::last_position() const { return std::max(0, slide_.bounds().height - visible()); }

}  // namespace wizard::win32
