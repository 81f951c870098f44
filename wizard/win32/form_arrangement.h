// Where everything of the form stands in the window: the parts beside the pages, the page that is shown, its charts and
// its scroll bar, in the present size, resolution and text size.
#pragma once

#include <windows.h>

#include <array>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "wizard/win32/chart_places.h"
#include "wizard/win32/look.h"
#include "wizard/win32/native_events.h"
#include "wizard/win32/page_layout.h"
#include "wizard/win32/shown_controls.h"
#include "wizard/win32/window_layout.h"

namespace wizard::win32 {

class FormArrangement {
 public:
  /// Both must outlive it.
  FormArrangement(const form::Form& form, const ShownControls& controls) : form_(form), controls_(controls) {}

  /// Takes the window and its resolution; before anything is placed.
  void open(HWND window);

  /// Places everything that is seen, in the window's present size.
  void arrange();
  /// The same for the page that is shown, where something on it has changed its size since.
  void arrange_changes();
  /// What stands on the page may need another size from now on; see arrange_changes().
  void note_change() noexcept { is_arranged_ = false; }
  /// Lines below fields from now on; they stay until others are set. Their windows must outlive that.
  void set_notes(PageNotes notes);
  const PageNotes& notes() const noexcept { return notes_; }
  /// Where the bar below the pages begins, in pixels.
  int bar_top() const noexcept { return static_cast<int>(parts_.bar.top); }
  /// Scrolls the page that is shown by a request of its scroll bar (SB_LINEDOWN …); false where it cannot move so.
  bool scroll_page(int request);
  /// Scrolls a control that has the focus into view.
  void reveal(HWND window);
  /// How far the form's scroll bar reaches in the present size.
  ScrollRange scroll_range() const;

  /// Pixels to the inch.
  UINT dpi() const noexcept { return dpi_; }
  void set_dpi(UINT dpi) noexcept { dpi_ = dpi; }
  /// In the present resolution and text size.
  HFONT font(const form::Control& control) const { return fonts_.font(control.font(), text_style(control), dpi_); }

  // Where a window is created, so that it need not be moved there. All in pixels of its container.

  /// Of what lies on no page, or of a page.
  RECT place_of_part(const form::Control& control) const;
  /// Of what lies on a page, as the page was when it was asked for first, or when it was begun; empty for what is not
  /// seen on it.
  RECT place_on_page(const form::Control& page, const form::Control& control);
  RECT place_of_chart(const form::Control& chart) const;
  int chart_title_height() const;
  /// True for a chart below the first row.
  bool is_lower_chart(const form::Control& chart) const;

  /// The page is about to be shown: from its upper end, in the place of the pages.
  void begin_page(const form::Control& page);
  /// All windows of the page are there.
  void finish_page(const form::Control& page);
  /// The parts beside the pages may need other sizes.
  void arrange_parts();
  /// The form's scroll bar and its slide.
  void arrange_scroll_bar();
  /// Shows that the control has other bounds in the form.
  void show_bounds(const form::Control& control);

 private:
  TextSizes sizes() const { return {fonts_, dpi_}; }
  std::array<std::pair<const form::Control*, RECT>, 6> part_places() const;
  PagePlaces places_of(const form::Control& page);
  void plan(const form::Control& page);
  void arrange_page(const form::Control& page);
  void arrange_page(const form::Control& page, const PagePlaces& places);
  void move_all(const PagePlaces& places);
  void move(const form::Control& control, const RECT& place) const;
  void arrange_charts();
  ChartPlaces chart_places() const;
  const form::Control* page_shown() const;
  const ShownControl* page_window() const;

  const form::Form& form_;
  const ShownControls& controls_;
  mutable Fonts fonts_;  ///< made when they are first asked for
  HWND window_ = nullptr;
  UINT dpi_ = USER_DEFAULT_SCREEN_DPI;
  WindowParts parts_{};
  std::map<const form::Control*, std::vector<PageLine>> lines_;  ///< of pages that were asked for
  const form::Control* planned_ = nullptr;  ///< the page that place_on_page() was asked for last, or that was begun
  PagePlaces plan_;                         ///< of that page
  std::unordered_map<const form::Control*, RECT> place_in_plan_;
  PageNotes notes_;
  SIZE frame_of_charts_{};
  int scrolled_ = 0;         ///< pixels that the page that is shown is scrolled by
  bool is_arranged_ = true;  ///< false: something on the page may need another size
};

}  // namespace wizard::win32
