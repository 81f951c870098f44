// One wizard for one installation: a second one that is started in the same session of Windows leaves it to the first.
#pragma once

#include <windows.h>

#include <string_view>

namespace wizard::win32 {

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
  /// one has none yet; false where none came.
  bool show_first() const;

 private:
  HWND window_of_first() const noexcept;

  HANDLE claim_ = nullptr;
  volatile LONG* shared_ = nullptr;  ///< the first one's window; 32 bits of a window's handle are all that count
  bool first_ = true;
};

}  // namespace wizard::win32
