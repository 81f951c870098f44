#include "wizard/win32/form_arrangement.h"

#include <algorithm>

#include "wizard/page_lines.h"
#include "wizard/win32/chart_option.h"
#include "wizard/win32/control_properties.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/page_images.h"

namespace wizard::win32 {
namespace {

SIZE size_of(const RECT& place) { return {place.right - place.left, place.bottom - place.top}; }

/// A scroll bar that has nowhere to go is not there. True if it came or went.
bool show_page_scroll_bar(HWND page, int height, int visible, int position) {
  const LONG_PTR before = GetWindowLongPtrW(page, GWL_STYLE);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = height - 1;
  info.nPage = static_cast<UINT>(visible);
  info.nPos = position;
  if (height <= visible) info.nMax = 0;
  SetScrollInfo(page, SB_VERT, &info, TRUE);
  return ((GetWindowLongPtrW(page, GWL_STYLE) ^ before) & WS_VSCROLL) != 0;
}

int scroll_request(HWND page, int request, int position, int visible, int line) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (request) {
    case SB_LINEUP:
      return position - line;
    case SB_LINEDOWN:
      return position + line;
    case SB_PAGEUP:
      return position - visible;
    case SB_PAGEDOWN:
      return position + visible;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
      GetScrollInfo(page, SB_VERT, &info);
      return info.nTrackPos;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return 1 << 20;
    default:
      return position;
  }
}

}  // namespace

void FormArrangement::open(HWND window) {
  window_ = window;
  dpi_ = GetDpiForWindow(window);
  arrange_parts();
}

ChartPlaces FormArrangement::chart_places() const { return {form_, sizes(), frame_of_charts_}; }

RECT FormArrangement::place_of_chart(const form::Control& chart) const { return chart_places().chart(chart); }

int FormArrangement::chart_title_height() const { return chart_places().title_height(); }

bool FormArrangement::is_lower_chart(const form::Control& chart) const {
  return chart.kind() == form::Kind::ChartOption && chart.bounds().top >= chart_places().visible() / 3;
}

const form::Control* FormArrangement::page_shown() const {
  for (const form::Control* page : form_.array("contstep"))
    if (page->visible()) return page;
  return nullptr;
}

/// Of the page that is shown; null where it has no window.
const ShownControl* FormArrangement::page_window() const {
  const form::Control* page = page_shown();
  const ShownControl* shown = page == nullptr ? nullptr : controls_.of(*page);
  return shown != nullptr && shown->window != nullptr ? shown : nullptr;
}

void FormArrangement::move(const form::Control& control, const RECT& place_in_window) const {
  const ShownControl* shown = controls_.of(control);
  if (shown == nullptr || shown->window == nullptr) return;
  place(*shown, place_in_window, dpi_);
}

void FormArrangement::arrange() {
  planned_ = nullptr;
  arrange_parts();
  if (const form::Control* page = page_shown()) arrange_page(*page);
}

void FormArrangement::arrange_changes() {
  if (is_arranged_) return;
  is_arranged_ = true;
  if (const form::Control* page = page_shown()) arrange_page(*page);
}

void FormArrangement::arrange_parts() {
  RECT inside;
  GetClientRect(window_, &inside);
  parts_ = place_parts(form_, sizes(), size_of(inside));
  for (const auto& [control, part] : part_places())
    if (control != nullptr) move(*control, part);
}

/// What lies on no page; null for a control that the form lacks.
std::array<std::pair<const form::Control*, RECT>, 6> FormArrangement::part_places() const {
  return {{
      {form_.find("Image1"), parts_.illustration},
      {form_.find("lstSteps"), parts_.steps},
      {form_.find("pbar"), parts_.progress},
      {form_.find("Command1", 0), parts_.next},
      {form_.find("Command1", 1), parts_.back},
      {form_.find("Command1", 2), parts_.cancel},
  }};
}

RECT FormArrangement::place_of_part(const form::Control& control) const {
  if (is_container(control)) return parts_.page;
  const auto places = part_places();
  const auto* const place = std::ranges::find(places, &control, [](const auto& row) { return row.first; });
  return place == places.end() ? RECT{} : place->second;
}

PagePlaces FormArrangement::places_of(const form::Control& page) {
  const auto [lines, is_new] = lines_.try_emplace(&page);
  if (is_new) lines->second = page_lines(form_, page);
  SIZE room = size_of(parts_.page);
  const TextSizes text_sizes = sizes();
  PagePlaces places = place_page(lines->second, notes_, text_sizes, room);
  if (places.height <= room.cy) return places;
  room.cx -= scroll_bar_width(dpi_);
  return place_page(lines->second, notes_, text_sizes, room);
}

void FormArrangement::plan(const form::Control& page) {
  planned_ = &page;
  plan_ = places_of(page);
  place_in_plan_ = {plan_.controls.begin(), plan_.controls.end()};
  for (const auto& [control, place] : plan_.controls)
    if (control->kind() == form::Kind::PictureBox) frame_of_charts_ = size_of(place);
}

RECT FormArrangement::place_on_page(const form::Control& page, const form::Control& control) {
  if (planned_ != &page) plan(page);
  const auto known = place_in_plan_.find(&control);
  return known == place_in_plan_.end() ? RECT{} : known->second;
}

void FormArrangement::arrange_page(const form::Control& page) {
  move(page, parts_.page);
  arrange_page(page, places_of(page));
}

void FormArrangement::arrange_page(const form::Control& page, const PagePlaces& places) {
  const int visible = size_of(parts_.page).cy;
  scrolled_ = std::clamp(scrolled_, 0, std::max(0, places.height - visible));
  const ShownControl* shown = controls_.of(page);
  const bool is_new_width = shown != nullptr && show_page_scroll_bar(shown->window, places.height, visible, scrolled_);
  move_all(places);
  // Wine leaves out a part of what moves aside meanwhile.
  if (is_new_width) RedrawWindow(shown->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormArrangement::move_all(const PagePlaces& places) {
  for (const auto& [control, place] : places.controls) {
    RECT there = place;
    OffsetRect(&there, 0, -scrolled_);
    move(*control, there);
    if (control->kind() == form::Kind::PictureBox) {
      frame_of_charts_ = size_of(place);
      arrange_charts();
    }
  }
  for (const auto& [window, place] : places.notes)
    SetWindowPos(window, nullptr, place.left, place.top - scrolled_, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  for (const auto& [control, place] : places.controls)
    if (control->kind() == form::Kind::Image) redraw_images_around(*control, controls_);
}

void FormArrangement::arrange_charts() {
  const ChartPlaces places = chart_places();
  for (const form::Control* chart : form_.array("optThumb")) {
    const ShownControl* shown = controls_.of(*chart);
    if (shown == nullptr || shown->window == nullptr) continue;
    draw_as_chart(shown->window, places.title_height());
    place(*shown, places.chart(*chart), dpi_);
  }
  arrange_scroll_bar();
}

void FormArrangement::arrange_scroll_bar() {
  const ChartPlaces places = chart_places();
  move(form_.at("picSlide"), places.slide());
  const form::Control& bar = form_.at("vsbSlide");
  move(bar, places.bar());
  const ShownControl* shown = controls_.of(bar);
  if (shown != nullptr && shown->window != nullptr)
    show_scroll_range(shown->window, places.visible(), places.last_position(), bar.value());
}

ScrollRange FormArrangement::scroll_range() const {
  const ChartPlaces places = chart_places();
  return {places.visible(), places.last_position()};
}

void FormArrangement::show_bounds(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Image:
      is_arranged_ = false;
      break;
    case form::Kind::ChartOption:
      move(control, chart_places().chart(control));
      break;
    case form::Kind::PictureBox:
    case form::Kind::ScrollBar:
      arrange_scroll_bar();
      break;
    default:
      break;
  }
}

void FormArrangement::set_notes(PageNotes notes) {
  notes_ = std::move(notes);
  if (const form::Control* page = page_shown()) arrange_page(*page);
}

bool FormArrangement::scroll_page(int request) {
  constexpr int line = 40;  // pixels at 96 to the inch
  const ShownControl* shown = page_window();
  if (shown == nullptr) return false;
  const int before = scrolled_;
  scrolled_ = scroll_request(shown->window, request, scrolled_, size_of(parts_.page).cy,
                             MulDiv(line, static_cast<int>(dpi_), USER_DEFAULT_SCREEN_DPI));
  arrange_page(*shown->control);
  return scrolled_ != before;
}

void FormArrangement::reveal(HWND window) {
  const ShownControl* shown = page_window();
  if (shown == nullptr || IsChild(shown->window, window) == 0) return;
  constexpr int around = 12;  // pixels at 96 to the inch
  const int edge = MulDiv(around, static_cast<int>(dpi_), USER_DEFAULT_SCREEN_DPI), before = scrolled_;
  RECT place;
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, shown->window, reinterpret_cast<POINT*>(&place), 2);
  const int visible = size_of(parts_.page).cy;
  if (place.bottom + edge > visible) scrolled_ += place.bottom + edge - visible;
  if (place.top - edge < scrolled_ - before) scrolled_ = before + place.top - edge;
  if (scrolled_ != before) arrange_page(*shown->control);
}

void FormArrangement::begin_page(const form::Control& page) {
  scrolled_ = 0;
  move(page, parts_.page);
  plan(page);
}

void FormArrangement::finish_page(const form::Control& page) {
  arrange_page(page, plan_);
  is_arranged_ = true;
}

}  // namespace wizard::win32
