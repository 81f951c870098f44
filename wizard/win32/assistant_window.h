// The wizard's window: it observes the form and shows it, and turns what the user does into the form's events. It holds
// no rule of the wizard.
#pragma once

#include <windows.h>

#include "wizard/assistant.h"
#include "wizard/win32/finding_notes.h"
#include "wizard/win32/form_view.h"
#include "wizard/win32/progress_window.h"

namespace wizard::win32 {

class AssistantWindow : public form::FormObserver {
 public:
  /// Shows the assistant's form, which must be loaded, and observes it until destroyed. Needs a ComSession around it.
  AssistantWindow(HINSTANCE instance, frmAssistantFirstSteps& assistant);
  ~AssistantWindow() override;
  AssistantWindow(const AssistantWindow&) = delete;
  AssistantWindow& operator=(const AssistantWindow&) = delete;

  /// The message loop; returns when the run has ended, the window still being there.
  void run();
  /// After a finish that wrote everything: the page that says so, until the user closes it.
  void show_outcome();
  HWND handle() const noexcept { return window_; }
  /// The long work that may go on over the window; while it does, the session does not end. It must outlive the window.
  void set_work(ProgressWindow& work) noexcept { work_ = &work; }

  void property_changed(const form::Control& control, form::Property property) override;
  void control_added(const form::Control& control) override;
  void focus_requested(const form::Control& control) override;
  void redraw_requested(const form::Control& control) override;

 private:
  static INT_PTR CALLBACK dialog_procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  // True where the message is done with.
  bool handle_user_message(HWND window, UINT message, WPARAM first, LPARAM second);
  bool handle_window_message(HWND window, UINT message, LPARAM second);
  bool handle_system_message(HWND window, UINT message, WPARAM first, LPARAM second);
  bool may_session_end() const;
  bool next_message(MSG& message);
  bool work_ahead();
  bool is_meant_for_page_before(const form::Control& control) const;

  void command(HWND child, UINT notification);
  void scroll(form::Control& bar, int request, int thumb);
  void turn_wheel(int delta);
  void scroll_line(int request);
  bool turn_charts(const MSG& message);
  void follow_focus(const MSG& message);
  void show_findings();
  Spoken voice(const form::Control& control) const;
  void bring_into_view(const form::Control& chart);
  void close();
  void raise(const FormEvent& event);
  void focus_first_of_page();
  void paint_window(HWND window) const;

  frmAssistantFirstSteps& assistant_;
  FormView view_;
  FindingNotes notes_;
  HWND window_ = nullptr;
  ProgressWindow* work_ = nullptr;
  HWND focus_ = nullptr;          ///< what had the focus after the last message
  int wheel_rest_ = 0;            ///< turned, but not yet a whole notch
  ULONGLONG page_shown_ = 0;      ///< when the page came up, in milliseconds of the system's clock
  bool key_is_repeated_ = false;  ///< the message that is handled now comes from a key held down
  bool is_open_ = false;          ///< the window has its controls
  bool in_event_ = false;
  bool has_icons_ = false;        ///< the frame has them
  bool notes_due_ = true;         ///< findings may be others than those that are shown
  bool focus_asked_for_ = false;  ///< by the event that is handled now
};

}  // namespace wizard::win32
