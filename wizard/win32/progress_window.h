// Long work shown to the user: a small window with a text and a bar that comes up when the work takes longer than 0.4
// seconds. The work runs on this thread; whenever it tells something, the program's windows answer what has come in
// meanwhile. The window below takes no input until the work is done. Work that can be cancelled has a button for that.
// Until it is done, the user's session does not end, and Windows shows why.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "database/environment.h"
#include "wizard/win32/look.h"

namespace wizard::win32 {

class ProgressWindow : public database::Progress {
 public:
  ProgressWindow() = default;
  ~ProgressWindow() override { finish(); }
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  /// The window that it stands over (null: the middle of the screen), its title and its font (a face name; empty: the
  /// system's).
  void set_owner(HWND owner, std::string_view title, std::string_view font);

  void start(std::string_view caption, std::int32_t maximum) override;
  void set_caption(std::string_view caption) override;
  void set_value(std::int32_t value) override;
  void finish() override;
  void at_work() override;
  void offer_cancel(std::string_view caption) override { cancel_caption_ = caption; }
  bool cancelled() const override { return cancelled_; }

  bool is_working() const noexcept { return begun_ != 0; }
  /// The end of the session was asked for: what can be cancelled is.
  void end_soon() noexcept { cancelled_ = cancelled_ || !cancel_caption_.empty(); }

 private:
  static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void show_when_due();
  void create();
  void hold_session();
  void release();

  HWND owner_ = nullptr, window_ = nullptr, text_ = nullptr, bar_ = nullptr;
  std::string title_, font_, caption_, cancel_caption_;  ///< the last is empty where there is nothing to cancel
  bool cancelled_ = false;
  Fonts fonts_;
  UINT dpi_ = USER_DEFAULT_SCREEN_DPI;  ///< of the window
  std::int32_t maximum_ = 0, value_ = 0;
  ULONGLONG begun_ = 0, answered_ = 0;  ///< milliseconds of the system's clock; 0: no work goes on
  HWND holding_ = nullptr;              ///< the window that gives the reason why the session does not end yet
  HWND focus_before_ = nullptr;         ///< of the owner's, when it was disabled
  bool owner_disabled_ = false, answering_ = false;
};

}  // namespace wizard::win32
