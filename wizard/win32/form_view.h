// The form as it stands in the window: native controls with their fonts, pictures and tips. What the page that is shown
// does not need comes in piece by piece, so that it answers at once.
#pragma once

#include <windows.h>

#include <deque>
#include <optional>

#include "wizard/win32/look.h"
#include "wizard/win32/native_events.h"
#include "wizard/win32/picture_queue.h"
#include "wizard/win32/shown_controls.h"
#include "wizard/win32/tool_tips.h"

namespace wizard::win32 {

class FormView {
 public:
  /// The form must outlive it.
  explicit FormView(form::Form& form) : form_(form), controls_(form) {}

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
  void create(ShownControl& shown);
  void create_page(ShownControl& page);
  void create_contents(const form::Control& page);
  void show(ShownControl& shown, form::Property property);
  void show_timer(const form::Control& timer) const;
  void give_tab_stop(const form::Control& chosen) const;
  void give_font(const ShownControl& shown);

  form::Form& form_;
  ShownControls controls_;
  PictureQueue pictures_;
  Fonts fonts_;
  ToolTips tips_;
  HWND window_ = nullptr;
  UINT dpi_ = USER_DEFAULT_SCREEN_DPI;
  std::deque<ShownControl*> waiting_;  ///< to be created
  bool showing_ = false;
  const form::Control* being_read_ = nullptr;  ///< shows already what the form is told of it
};

}  // namespace wizard::win32
