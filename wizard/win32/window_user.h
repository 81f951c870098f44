// What the wizard asks of its user, answered by Windows: message boxes, folder choice, the shell.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/user_port.h"
#include "wizard/win32/gdi.h"
#include "wizard/win32/look.h"

namespace wizard::win32 {

class WindowUser : public UserPort {
 public:
  /// The window that dialogs belong to; null before there is one.
  void set_owner(HWND owner) noexcept { owner_ = owner; }

  int message_box(std::string_view text, std::uint32_t style, std::string_view title) override;
  void beep() override;
  std::optional<std::string> choose_folder(std::string_view title) override;
  bool open_file(std::string_view path) override;
  std::vector<std::string> recycle(std::string_view folder, std::string_view pattern) override;
  bool has_recycle_bin(std::string_view folder) override;
  bool is_network_path(std::string_view path) override;
  std::int32_t text_width(std::string_view text, std::string_view font) override;
  void set_topmost(bool topmost) override;

 private:
  HWND owner_ = nullptr;
  Fonts fonts_;
  /// For measuring: the system gives a window's context less quickly.
  MemoryContext screen_{CreateCompatibleDC(nullptr)};
};

}  // namespace wizard::win32
