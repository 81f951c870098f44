// The form as it stands in the window: native controls with their fonts, pictures and tips. What the page that is shown
// does not need comes in piece by piece, so that it answers at once.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "wizard/spoken.h"
#include "wizard/win32/form_arrangement.h"
#include "wizard/win32/native_events.h"
#include "wizard/win32/picture_queue.h"
#include "wizard/win32/shown_controls.h"
#include "wizard/win32/tool_tips.h"

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

  FormArrangement& layout() noexcept { return layout_; }
  const FormArrangement& layout() const noexcept { return layout_; }

  /// True while a property is being shown: what a native control reports then is nothing that the user did.
  bool is_showing() const noexcept { return showing_; }
  /// Takes over into the form what a notification of the control tells of; see event_of_command().
  std::optional<FormEvent> read(const ShownControl& shown, UINT notification);
  /// Answers a tip that wants its text; false for any other notification.
  bool answer_tip(NMHDR& notification) { return tips_.answer(notification, controls_); }

  const ShownControls& controls() const noexcept { return controls_; }

 private:
  RECT place_of(const form::Control& control);
  void create(ShownControl& shown);
  void create_step_list();
  void create_page(ShownControl& page);
  void create_contents(const form::Control& page);
  void show_page(const form::Control& page);
  void give_voices();
  void give_voice(const ShownControl& shown);
  void show(ShownControl& shown, form::Property property);
  void show_timer(const form::Control& timer) const;
  void give_tab_stop(const form::Control& chosen) const;
  void give_font(const ShownControl& shown);
  void give_fonts();
  void arrange_anew();

  form::Form& form_;
  ShownControls controls_;
  FormArrangement layout_{form_, controls_};
  PictureQueue pictures_;
  ToolTips tips_;
  std::function<Spoken(const form::Control&)> voice_;
  HWND window_ = nullptr;
  std::deque<ShownControl*> waiting_;  ///< to be created
  /// They answer a screen reader as soon as their page is shown; where one runs, from the beginning. A procedure in
  /// between costs time with every message.
  std::vector<const ShownControl*> silent_;
  bool screen_reader_runs_ = false;  ///< when the page that is shown came up
  bool showing_ = false;
  const form::Control* being_read_ = nullptr;  ///< shows already what the form is told of it
};

}  // namespace wizard::win32
