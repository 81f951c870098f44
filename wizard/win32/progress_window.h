// Long work shown to the user: a small window with a text and a bar that comes up when the work takes longer than 0.4
// seconds. The work runs on this thread; the window is drawn whenever it is told something. Work that can be
// cancelled has a button for that, and the window below takes no input until the work is done.
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
  void offer_cancel(std::string_view caption) override { cancel_caption_ = caption; }
  bool cancelled() const override { return cancelled_; }

 private:
  static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void show_when_due();
  void create();

  HWND owner_ = nullptr, window_ = nullptr, text_ = nullptr, bar_ = nullptr;
  std::string title_, font_, caption_, cancel_caption_;  ///< the last is empty where there is nothing to cancel
  bool cancelled_ = false;
  Fonts fonts_;
  std::int32_t maximum_ = 0, value_ = 0;
  ULONGLONG begun_ = 0;  ///< milliseconds of the system's clock; 0: no work goes on
};

}  // namespace wizard::win32
