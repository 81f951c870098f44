// The wizard's program as a user sees it: its window, pages and controls, found by the names that they have in the form
// ("txtName", "optBGUnit(1)"), and the message boxes that it shows.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/window/driver/process.h"
#include "wizard/form/form.h"

namespace window_driver {

/// The text of any program's window or field.
std::string shown_text(HWND window);

class WizardProgram {
 public:
  /// Starts it with these arguments and waits for its first page. Throws std::runtime_error where none comes.
  explicit WizardProgram(std::string_view arguments);

  const Process& process() const noexcept { return process_; }
  HWND window() const noexcept { return window_; }
  /// Pixels to the inch, by the user's setting: Wine tells a program of its own resolution only.
  UINT resolution() const;

  /// The tag of the page shown; empty where none is.
  std::string page() const;
  /// Until it has settled. Fails (std::runtime_error, naming the page that is shown) where it does not come up.
  void wait_for_page(std::string_view tag) const;

  /// Throws std::runtime_error where there is no such control.
  HWND control(std::string_view path) const;
  const form::Control& described(std::string_view path) const;
  std::string text(std::string_view path) const;
  bool is_chosen(std::string_view path) const;
  bool is_shown(std::string_view path) const;
  bool is_enabled(std::string_view path) const;
  /// Path of the control that has the focus; empty where none of the form's has it.
  std::string focus() const;
  /// Every control of the form that is seen now, charts included.
  std::vector<const form::Control*> seen() const;

  /// What a user does, without keys and mouse. The first returns before the click is handled.
  void press(std::string_view path) const;
  void type(std::string_view path, std::string_view text) const;
  void choose(std::string_view path, int entry) const;
  /// Waits until a click on a page that has just come up is taken for one that is meant for it.
  void let_page_settle() const;
  /// Presses Next or Back and waits until another page is shown and has settled.
  void next() const { turn_page("Command1(0)"); }
  void back() const { turn_page("Command1(1)"); }
  /// Next until the page is shown.
  void go_to(std::string_view tag) const;

  /// Where the wizard has finished and says so: closes it. Waits for that, or for another end.
  void close_outcome() const;

  /// Text of the message box shown; fails where none comes.
  std::string message() const;
  bool asks() const { return message_box() != nullptr; }
  /// Presses the message box's button (IDYES …) and waits until the box is gone.
  void answer(int button) const;
  bool is_topmost() const { return (GetWindowLongW(window_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }
  HWND message_box() const { return process_.find_window(L"#32770"); }

 private:
  void look_around() const;
  /// Null where it is not in the window (yet).
  HWND find(const form::Control& wanted) const;
  const form::Control* shown_in(HWND window) const;
  void turn_page(std::string_view button) const;

  Process process_;
  HWND window_ = nullptr;
  form::Form form_;                                     ///< the names only
  mutable std::map<const form::Control*, HWND> found_;  ///< by the last look around
};

}  // namespace window_driver
