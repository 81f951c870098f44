#include "wizard/win32/window_user.h"

#include "support/shell.h"
#include "support/win32/wide.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {

int WindowUser::message_box(std::string_view text, std::uint32_t style, std::string_view title) {
  // Enter alone is to give nothing up.
  const UINT buttons = style == message_style::yes_no_system_modal ? style | MB_DEFBUTTON2 : style;
  return MessageBoxW(owner_, support::wide(text).c_str(), support::wide(title).c_str(), buttons);
}

void WindowUser::beep() { MessageBeep(0xFFFFFFFF); }

std::optional<std::string> WindowUser::choose_folder(std::string_view title) {
  return support::choose_folder(title, owner_);
}

/// What opens it may come to the front; the wizard's window is above all others again as soon as it is used.
bool WindowUser::open_file(std::string_view path) {
  set_topmost(false);
  AllowSetForegroundWindow(ASFW_ANY);
  const bool opened = support::open_file(path);
  if (!opened) set_topmost(true);
  return opened;
}

std::vector<std::string> WindowUser::recycle(std::string_view folder, std::string_view pattern) {
  return support::recycle(folder, pattern, {.owner = owner_});
}

bool WindowUser::has_recycle_bin(std::string_view folder) { return support::has_recycle_bin(folder); }

bool WindowUser::is_network_path(std::string_view path) { return support::is_network_path(path); }

/// Measured at the window's resolution, before there is one at the screen's.
std::int32_t WindowUser::text_width(std::string_view text, std::string_view font) {
  const UINT dpi = owner_ != nullptr ? GetDpiForWindow(owner_) : GetDpiForSystem();
  const Selection selection(screen_.get(), fonts_.font(std::string(font), TextStyle::Normal, dpi));
  const std::wstring characters = support::wide(text);
  SIZE size{};
  GetTextExtentPoint32W(screen_.get(), characters.c_str(), static_cast<int>(characters.size()), &size);
  return twips(size.cx, dpi);
}

void WindowUser::set_topmost(bool topmost) {
  if (owner_ == nullptr) return;
  SetWindowPos(owner_, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

}  // namespace wizard::win32
