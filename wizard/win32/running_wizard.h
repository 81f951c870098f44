// One wizard for one installation and user: a second one leaves it to the first, also where the user has a second
// session on the machine (a remote desktop, a terminal server), whose windows this session cannot show.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace wizard::win32 {

/// The name under which all of the user's sessions see that the installation is claimed.
std::wstring claim_of_all_sessions(std::string_view installation);

class RunningWizard {
 public:
  /// Claims the installation, given by any text that names it (case does not count), until destroyed. Where the system
  /// cannot tell whether another one runs, this is the first.
  explicit RunningWizard(std::string_view installation);
  ~RunningWizard();
  RunningWizard(const RunningWizard&) = delete;
  RunningWizard& operator=(const RunningWizard&) = delete;

  /// False where another wizard had claimed the installation before.
  bool is_first() const noexcept { return first_; }
  /// Of the first one: the window that others bring to the front.
  void set_window(HWND window) const noexcept;
  /// Brings the first one's window, or the dialog that is open over it, to the front. Waits for some seconds while that
  /// one has none yet; false where none came, and at once where the first one runs in another session.
  bool show_first() const;

 private:
  HWND window_of_first() const noexcept;

  HANDLE claim_ = nullptr;
  HANDLE all_sessions_ = nullptr;    ///< a mutex: making shared memory for all sessions takes a right that users lack
  volatile LONG* shared_ = nullptr;  ///< the first one's window; 32 bits of a window's handle are all that count
  bool first_, first_is_elsewhere_ = false;
};

}  // namespace wizard::win32
