// The wizard's program as a user sees it: its window, its pages and controls by the names that they have in the form
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
  /// Starts the program with these arguments and waits for its first page. Throws std::runtime_error if none comes.
  explicit WizardProgram(std::string_view arguments);

  const Process& process() const noexcept { return process_; }
  HWND window() const noexcept { return window_; }
  /// Pixels to the inch by the user's setting at the start; Wine tells a program only its own resolution.
  UINT resolution() const noexcept { return resolution_; }

  /// The tag of the page that is shown; empty if none is.
  std::string page() const;
  /// Waits until the page has settled. Throws std::runtime_error, naming the page that is shown, if it does not appear.
  void wait_for_page(std::string_view tag) const;

  /// The control's window. Throws std::runtime_error if there is none.
  HWND control(std::string_view path) const;
  const form::Control& described(std::string_view path) const;
  std::string text(std::string_view path) const;
  bool is_chosen(std::string_view path) const;
  bool is_shown(std::string_view path) const;
  bool is_enabled(std::string_view path) const;
  /// Path of the control that has the focus; empty if none of the form's controls has it.
  std::string focus() const;
  /// Every control of the form that can be seen now, charts included.
  std::vector<const form::Control*> seen() const;

  /// What a user does, but without keys and mouse. The first returns before the click is handled.
  void press(std::string_view path) const;
  void type(std::string_view path, std::string_view text) const;
  void choose(std::string_view path, int entry) const;
  /// Waits until a click on a page that has just appeared is taken for one that is meant for it.
  void let_page_settle() const;
  /// Presses Next or Back and waits until another page is shown and has settled.
  void next() const { turn_page("Command1(0)"); }
  void back() const { turn_page("Command1(1)"); }
  /// Presses Next until the page is shown.
  void go_to(std::string_view tag) const;

  /// If the wizard has finished and says so, closes it. Waits for that, or for another end.
  void close_outcome() const;

  /// The text of the message box; fails if none comes.
  std::string message() const;
  bool asks() const { return message_box() != nullptr; }
  /// Presses the message box's button (IDYES …) and waits until the box is gone.
  void answer(int button) const;
  bool is_topmost() const { return (GetWindowLongW(window_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }
  HWND message_box() const { return process_.find_window(L"#32770"); }

 private:
  void look_around() const;
  /// As IsWindowVisible, but `known` spares the questions that were asked already.
  bool is_visible(HWND window, std::map<HWND, bool>& known) const;
  /// The control's window; null if there is none (yet).
  HWND find(const form::Control& wanted) const;
  const form::Control* shown_in(HWND window) const;
  void turn_page(std::string_view button) const;

  Process process_;
  HWND window_ = nullptr;
  UINT resolution_ = 0;
  form::Form form_;                                     ///< used only for the names
  mutable std::map<const form::Control*, HWND> found_;  ///< the windows that were found last
  /// What stays the same of each window that was ever found. Each question about a window of another program takes
  /// long.
  struct Place {
    int id;
    HWND parent;
  };
  mutable std::map<HWND, Place> places_;
};

}  // namespace window_driver
