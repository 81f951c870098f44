#include "wizard/win32/progress_window.h"

#include <commctrl.h>

#include "support/win32/wide.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

constexpr ULONGLONG patience = 400;  // milliseconds
// Twips.
constexpr form::Bounds inner_size{0, 0, 5400, 1380}, text_place{180, 180, 5040, 600}, bar_place{180, 960, 5040, 240};
constexpr wchar_t window_class[] = L"FirstStepsProgress";
constexpr DWORD style = WS_POPUP | WS_CAPTION;

void register_window_class() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = DefWindowProcW;
  description.hCursor = LoadCursorW(nullptr, IDC_WAIT);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = window_class;
  RegisterClassExW(&description);
}

HWND add(const wchar_t* class_name, DWORD child_style, const form::Bounds& bounds, HWND parent, UINT dpi) {
  const RECT place = pixels(bounds, dpi);
  return CreateWindowExW(0, class_name, nullptr, WS_CHILD | WS_VISIBLE | child_style, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, parent, nullptr, nullptr, nullptr);
}

}  // namespace

void ProgressWindow::set_owner(HWND owner, std::string_view title, std::string_view font) {
  owner_ = owner;
  title_ = title;
  font_ = font;
}

void ProgressWindow::start(std::string_view caption, std::int32_t maximum) {
  finish();
  caption_ = caption;
  maximum_ = maximum;
  value_ = 0;
  begun_ = GetTickCount64();
}

void ProgressWindow::set_caption(std::string_view caption) {
  caption_ = caption;
  if (text_ != nullptr) SetWindowTextW(text_, support::wide(caption_).c_str());
  show_when_due();
}

void ProgressWindow::set_value(std::int32_t value) {
  value_ = value;
  if (bar_ != nullptr) SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(value_), 0);
  show_when_due();
}

void ProgressWindow::finish() {
  if (window_ != nullptr) DestroyWindow(window_);
  window_ = text_ = bar_ = nullptr;
  begun_ = 0;
}

void ProgressWindow::show_when_due() {
  if (begun_ == 0 || GetTickCount64() - begun_ < patience) return;
  if (window_ == nullptr) create();
  UpdateWindow(window_);
}

void ProgressWindow::create() {
  register_window_class();
  const UINT dpi = owner_ != nullptr ? GetDpiForWindow(owner_) : GetDpiForSystem();
  RECT frame = pixels(inner_size, dpi), around{};
  AdjustWindowRectExForDpi(&frame, style, FALSE, WS_EX_TOPMOST, dpi);
  const int width = frame.right - frame.left, height = frame.bottom - frame.top;
  GetWindowRect(owner_ != nullptr ? owner_ : GetDesktopWindow(), &around);
  window_ = CreateWindowExW(WS_EX_TOPMOST, window_class, support::wide(title_).c_str(), style,
                            (around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2, width,
                            height, owner_, nullptr, nullptr, nullptr);
  text_ = add(L"STATIC", SS_NOPREFIX, text_place, window_, dpi);
  bar_ = add(PROGRESS_CLASSW, 0, bar_place, window_, dpi);
  SendMessageW(text_, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_.font(font_, TextStyle::Normal, dpi)), FALSE);
  SetWindowTextW(text_, support::wide(caption_).c_str());
  SendMessageW(bar_, PBM_SETRANGE32, 0, maximum_);
  SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(value_), 0);
  ShowWindow(window_, SW_SHOWNA);
}

}  // namespace wizard::win32
