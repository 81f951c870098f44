// How the form's controls get their places in the window.
#include <algorithm>

#include "wizard/page_lines.h"
#include "wizard/win32/chart_option.h"
#include "wizard/win32/chart_places.h"
#include "wizard/win32/control_properties.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/form_view.h"
#include "wizard/win32/page_images.h"

namespace wizard::win32 {
namespace {

SIZE size_of(const RECT& place) { return {place.right - place.left, place.bottom - place.top}; }

/// A scroll bar that has nowhere to go is not there.
void show_page_scroll_bar(HWND page, int height, int visible, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = height - 1;
  info.nPage = static_cast<UINT>(visible);
  info.nPos = position;
  if (height <= visible) info.nMax = 0;
  SetScrollInfo(page, SB_VERT, &info, TRUE);
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

const form::Control* FormView::page_shown() const {
  for (const form::Control* page : form_.array("contstep"))
    if (page->visible()) return page;
  return nullptr;
}

void FormView::move(const form::Control& control, const RECT& place_in_window) {
  const ShownControl* shown = controls_.of(control);
  if (shown == nullptr || shown->window == nullptr) return;
  place(*shown, place_in_window, dpi_);
}

void FormView::arrange() {
  arrange_parts();
  if (const form::Control* page = page_shown()) arrange_page(*page);
}

void FormView::arrange_changes() {
  if (is_arranged_) return;
  is_arranged_ = true;
  if (const form::Control* page = page_shown()) arrange_page(*page);
}

void FormView::arrange_parts() {
  RECT inside;
  GetClientRect(window_, &inside);
  parts_ = place_parts(form_, TextSizes(fonts_, dpi_), size_of(inside));
  for (const auto& [control, part] : part_places())
    if (control != nullptr) move(*control, part);
}

/// What lies on no page; null for a control that the form lacks.
std::array<std::pair<const form::Control*, RECT>, 6> FormView::part_places() const {
  return {{
      {form_.find("Image1"), parts_.illustration},
      {form_.find("lstSteps"), parts_.steps},
      {form_.find("pbar"), parts_.progress},
      {form_.find("Command1", 0), parts_.next},
      {form_.find("Command1", 1), parts_.back},
      {form_.find("Command1", 2), parts_.cancel},
  }};
}

PagePlaces FormView::places_of(const form::Control& page, const TextSizes& sizes) {
  const auto [lines, is_new] = lines_.try_emplace(&page);
  if (is_new) lines->second = page_lines(form_, page);
  SIZE room = size_of(parts_.page);
  PagePlaces places = place_page(lines->second, notes_, sizes, room);
  if (places.height <= room.cy) return places;
  room.cx -= scroll_bar_width(dpi_);
  return place_page(lines->second, notes_, sizes, room);
}

void FormView::arrange_page(const form::Control& page) {
  move(page, parts_.page);
  arrange_page(page, places_of(page, TextSizes(fonts_, dpi_)));
}

void FormView::arrange_page(const form::Control& page, const PagePlaces& places) {
  const int visible = size_of(parts_.page).cy;
  scrolled_ = std::clamp(scrolled_, 0, std::max(0, places.height - visible));
  if (const ShownControl* shown = controls_.of(page))
    show_page_scroll_bar(shown->window, places.height, visible, scrolled_);
  move_all(places);
}

void FormView::move_all(const PagePlaces& places) {
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

void FormView::arrange_charts() {
  const ChartPlaces places(form_, TextSizes(fonts_, dpi_), frame_of_charts_);
  for (const form::Control* chart : form_.array("optThumb")) {
    const ShownControl* shown = controls_.of(*chart);
    if (shown == nullptr || shown->window == nullptr) continue;
    draw_as_chart(shown->window, places.title_height());
    place(*shown, places.chart(*chart), dpi_);
  }
  arrange_scroll_bar();
}

void FormView::arrange_scroll_bar() {
  const ChartPlaces places(form_, TextSizes(fonts_, dpi_), frame_of_charts_);
  move(form_.at("picSlide"), places.slide());
  const form::Control& bar = form_.at("vsbSlide");
  move(bar, places.bar());
  const ShownControl* shown = controls_.of(bar);
  if (shown != nullptr && shown->window != nullptr)
    show_scroll_range(shown->window, places.visible(), places.last_position(), bar.value());
}

ScrollRange FormView::scroll_range() const {
  const ChartPlaces places(form_, TextSizes(fonts_, dpi_), frame_of_charts_);
  return {places.visible(), places.last_position()};
}

void FormView::show_bounds(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Image:
      is_arranged_ = false;
      break;
    case form::Kind::ChartOption:
      move(control, ChartPlaces(form_, TextSizes(fonts_, dpi_), frame_of_charts_).chart(control));
      break;
    case form::Kind::PictureBox:
    case form::Kind::ScrollBar:
      arrange_scroll_bar();
      break;
    default:
      break;
  }
}

void FormView::set_notes(PageNotes notes) {
  notes_ = std::move(notes);
  if (const form::Control* page = page_shown()) arrange_page(*page);
}

bool FormView::scroll_page(int request) {
  constexpr int line = 40;  // pixels at 96 to the inch
  const form::Control* page = page_shown();
  const ShownControl* shown = page == nullptr ? nullptr : controls_.of(*page);
  if (shown == nullptr || shown->window == nullptr) return false;
  const int before = scrolled_;
  scrolled_ = scroll_request(shown->window, request, scrolled_, size_of(parts_.page).cy,
                             MulDiv(line, static_cast<int>(dpi_), USER_DEFAULT_SCREEN_DPI));
  arrange_page(*page);
  return scrolled_ != before;
}

void FormView::reveal(HWND window) {
  const form::Control* page = page_shown();
  const ShownControl* shown = page == nullptr ? nullptr : controls_.of(*page);
  if (shown == nullptr || shown->window == nullptr || IsChild(shown->window, window) == 0) return;
  constexpr int around = 12;  // pixels at 96 to the inch
  const int edge = MulDiv(around, static_cast<int>(dpi_), USER_DEFAULT_SCREEN_DPI), before = scrolled_;
  RECT place;
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, shown->window, reinterpret_cast<POINT*>(&place), 2);
  const int visible = size_of(parts_.page).cy;
  if (place.bottom + edge > visible) scrolled_ += place.bottom + edge - visible;
  if (place.top - edge < scrolled_ - before) scrolled_ = before + place.top - edge;
  if (scrolled_ != before) arrange_page(*page);
}

/// What lies on a page is there when the page is shown, whether or not there was time to create it before.
void FormView::show_page(const form::Control& page) {
  scrolled_ = 0;
  create_step_list();
  move(page, parts_.page);
  const PagePlaces places = places_of(page, TextSizes(fonts_, dpi_));
  for (const auto& [control, place] : places.controls)
    if (control->kind() == form::Kind::PictureBox) frame_of_charts_ = size_of(place);
  create_contents(page, places);
  arrange_page(page, places);
  is_arranged_ = true;
}

void FormView::change_resolution(UINT dpi, const RECT& suggested) {
  dpi_ = dpi;
  give_fonts();
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  arrange_anew();
}

void FormView::change_text_size() {
  give_fonts();
  arrange_anew();
}

void FormView::arrange_anew() {
  arrange();
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace wizard::win32
