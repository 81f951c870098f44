// The form as it stands in the window: native controls with their fonts, pictures and tips. What the page that is shown
// does not need comes in piece by piece, so that it answers at once.
#pragma once

#include <windows.h>

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "wizard/spoken.h"
#include "wizard/win32/look.h"
#include "wizard/win32/native_events.h"
#include "wizard/win32/page_layout.h"
#include "wizard/win32/picture_queue.h"
#include "wizard/win32/shown_controls.h"
#include "wizard/win32/tool_tips.h"
#include "wizard/win32/window_layout.h"

namespace wizard::win32 {

class FormView {
 public:
  /// The form must outlive it.
  explicit FormView(form::Form& form) : form_(form), controls_(form) {}

  /// What is said of a control to screen readers; before open().
  void set_voice(std::function<Spoken(const form::Control&)> voice) { voice_ = std::move(voice); }
  /// Creates what is seen of the form in the window, in its resolution; the rest is left to work_ahead(). Before that
  /// nothing is shown; called once.
  void open(HWND window);
  /// One piece of what can wait; false where nothing does.
  bool work_ahead();

  // What the observer of the form is told of.
  void add(const form::Control& control);
  void show_change(const form::Control& control, form::Property property);
  void redraw(const form::Control& control) const;

  /// Gives the control the focus; nothing happens where it has no window.
  void focus(const form::Control& control) const;
  /// Takes another resolution (pixels to the inch), and for the window the place that the system suggests with it.
  void change_resolution(UINT dpi, const RECT& suggested);
  /// Takes the text size that look.h knows now.
  void change_text_size();

  // The layout.

  /// Places everything that is seen, in the window's present size.
  void arrange();
  /// The same for the page that is shown, where something on it has changed its size since.
  void arrange_changes();
  /// Lines below fields from now on; they stay until others are set. Their windows must outlive that.
  void set_notes(PageNotes notes);
  /// Where the bar below the pages begins, in pixels.
  int bar_top() const noexcept { return static_cast<int>(parts_.bar.top); }
  /// Scrolls the page that is shown by a request of its scroll bar (SB_LINEDOWN …); false where it cannot move so.
  bool scroll_page(int request);
  /// Scrolls a control that has the focus into view.
  void reveal(HWND window);
  /// How far the form's scroll bar reaches in the present size.
  ScrollRange scroll_range() const;

  /// True while a property is being shown: what a native control reports then is nothing that the user did.
  bool is_showing() const noexcept { return showing_; }
  /// Takes over into the form what a notification of the control tells of; see event_of_command().
  std::optional<FormEvent> read(const ShownControl& shown, UINT notification);
  /// Answers a tip that wants its text; false for any other notification.
  bool answer_tip(NMHDR& notification) { return tips_.answer(notification, controls_); }

  const ShownControls& controls() const noexcept { return controls_; }
  /// Pixels to the inch.
  UINT dpi() const noexcept { return dpi_; }

 private:
  void create(ShownControl& shown, const RECT& place = {});
  void create_part(ShownControl& shown);
  void create_step_list();
  void give_voices();
  void give_voice(const ShownControl& shown);
  bool can_wait(const form::Control& control) const;
  void create_page(ShownControl& page);
  void show_page(const form::Control& page);
  void show_bounds(const form::Control& control);
  void create_contents(const form::Control& page, const PagePlaces& places);
  void show(ShownControl& shown, form::Property property);
  void show_timer(const form::Control& timer) const;
  void give_tab_stop(const form::Control& chosen) const;
  void give_font(const ShownControl& shown);
  void give_fonts();
  void arrange_anew();
  void arrange_parts();
  std::array<std::pair<const form::Control*, RECT>, 6> part_places() const;
  void arrange_page(const form::Control& page);
  void arrange_page(const form::Control& page, const PagePlaces& places);
  PagePlaces places_of(const form::Control& page, const TextSizes& sizes);
  void move_all(const PagePlaces& places);
  void arrange_charts();
  void arrange_scroll_bar();
  void move(const form::Control& control, const RECT& place);
  const form::Control* page_shown() const;

  form::Form& form_;
  ShownControls controls_;
  PictureQueue pictures_;
  mutable Fonts fonts_;  ///< made when they are first asked for
  ToolTips tips_;
  std::function<Spoken(const form::Control&)> voice_;
  HWND window_ = nullptr;
  UINT dpi_ = USER_DEFAULT_SCREEN_DPI;
  WindowParts parts_{};
  std::map<const form::Control*, std::vector<PageLine>> lines_;  ///< of pages that were shown
  PageNotes notes_;
  SIZE frame_of_charts_{};
  int scrolled_ = 0;                   ///< pixels that the page that is shown is scrolled by
  bool is_arranged_ = true;            ///< false: something on the page may need another size
  std::deque<ShownControl*> waiting_;  ///< to be created
  /// They answer a screen reader as soon as their page is shown; where one runs, from the beginning. A procedure in
  /// between costs time with every message.
  std::vector<const ShownControl*> silent_;
  bool screen_reader_runs_ = false;  ///< when the page that is shown came up
  bool showing_ = false;
  const form::Control* being_read_ = nullptr;  ///< shows already what the form is told of it
};

}  // namespace wizard::win32
