#include "wizard/win32/tool_tips.h"

#include <commctrl.h>

#include "support/win32/wide.h"

namespace wizard::win32 {

ToolTips::~ToolTips() {
  if (tips_ != nullptr) DestroyWindow(tips_);
}

void ToolTips::add(const ShownControl& shown) {
  const form::Kind kind = shown.control->kind();
  if (kind == form::Kind::Button || kind == form::Kind::ChartOption) noted_.push_back(shown.window);
}

bool ToolTips::create(HWND form_window) {
  if (noted_.empty()) return false;
  // Without an owner: where the form's window owns a window that stays topmost, Wine no longer makes it topmost itself.
  if (tips_ == nullptr)
    tips_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
  for (const HWND control : noted_) {
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = form_window;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
  noted_.clear();
  return true;
}

bool ToolTips::answer(NMHDR& notification, const ShownControls& controls) {
  if (notification.code != TTN_GETDISPINFOW) return false;
  const ShownControl* shown = controls.of(reinterpret_cast<HWND>(notification.idFrom));
  text_ = shown != nullptr ? support::wide(shown->control->tooltip()) : std::wstring();
  reinterpret_cast<NMTTDISPINFOW&>(notification).lpszText = text_.data();
  return true;
}

}  // namespace wizard::win32
