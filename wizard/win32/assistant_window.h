// The wizard's window: it observes the form and shows it, and turns what the user does into the form's events. It holds
// no rule of the wizard.
#pragma once

#include <windows.h>

#include <deque>

#include "wizard/assistant.h"
#include "wizard/win32/look.h"
#include "wizard/win32/native_events.h"
#include "wizard/win32/shown_controls.h"
#include "wizard/win32/tool_tips.h"

namespace wizard::win32 {

class AssistantWindow : public form::FormObserver {
 public:
  /// Shows the assistant's form, which must be loaded, and observes it until destroyed. Needs a ComSession around it.
  AssistantWindow(HINSTANCE instance, frmAssistantFirstSteps& assistant);
  ~AssistantWindow() override;
  AssistantWindow(const AssistantWindow&) = delete;
  AssistantWindow& operator=(const AssistantWindow&) = delete;

  /// The message loop; returns when the run has ended.
  void run();
  HWND handle() const noexcept { return window_; }

  void property_changed(const form::Control& control, form::Property property) override;
  void control_added(const form::Control& control) override;
  void focus_requested(const form::Control& control) override;
  void redraw_requested(const form::Control& control) override;

 private:
  static INT_PTR CALLBACK dialog_procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  /// True where the message is done with.
  bool handle_message(HWND window, UINT message, WPARAM first, LPARAM second);
  bool next_message(MSG& message);

  void create(ShownControl& shown);
  void create_page(ShownControl& page);
  void create_contents(const form::Control& page);
  void show(const ShownControl& shown, form::Property property);
  void show_picture(ShownControl& shown);
  void load_picture(ShownControl& shown);
  /// Loads one that is waited for on the page that is shown or, `ahead`, on any; false where there is none.
  bool load_next_picture(bool ahead);
  void show_timer(const form::Control& timer);
  void give_tab_stop(const form::Control& chosen);
  void give_font(const ShownControl& shown);
  void change_resolution(UINT dpi, const RECT& suggested);
  /// One piece of what can wait; false where nothing does.
  bool work_ahead();
  void paint_window(HWND window) const;

  void command(HWND child, UINT notification);
  void scroll(form::Control& bar, int request, int thumb);
  void turn_wheel(int delta);
  void bring_into_view(const form::Control& chart);
  void close();
  void raise(const FormEvent& event);
  void focus_first_of_page();
  void focus(const form::Control& control);

  frmAssistantFirstSteps& assistant_;
  ShownControls controls_;
  PictureLoader pictures_;
  Fonts fonts_;
  ToolTips tips_;
  HWND window_ = nullptr;
  UINT dpi_ = 96;
  std::deque<ShownControl*> waiting_;          ///< to be created
  std::deque<ShownControl*> without_picture_;  ///< whose picture is still to be loaded
  int wheel_rest_ = 0;                         ///< turned, but not yet a whole notch
  bool showing_ = false;                       ///< what a native control reports of being shown is no event
  const form::Control* being_read_ = nullptr;  ///< shows already what the form is told of it
  bool in_event_ = false;
  bool focus_asked_for_ = false;  ///< by the event that is handled now
};

}  // namespace wizard::win32
