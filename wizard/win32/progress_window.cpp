#include "wizard/win32/progress_window.h"

#include <commctrl.h>

#include "support/win32/wide.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

constexpr ULONGLONG patience = 400;  // milliseconds
// Twips.
constexpr form::Bounds inner_size{0, 0, 5400, 1380}, text_place{180, 180, 5040, 600}, bar_place{180, 960, 5040, 240},
    button_place{3900, 1380, 1320, 390};
constexpr std::int32_t height_with_button = 1950;
constexpr wchar_t window_class[] = L"FirstStepsProgress";
constexpr DWORD style = WS_POPUP | WS_CAPTION;

void register_window_class(WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = window_class;
  RegisterClassExW(&description);
}

/// The window below takes input, or none while work that can be cancelled lets input through. A message box of that
/// window gives it its input back: it is taken away again whenever something is shown.
void take_input(HWND owner, bool takes) {
  if (owner != nullptr && (IsWindowEnabled(owner) != 0) != takes) EnableWindow(owner, takes ? TRUE : FALSE);
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
  cancelled_ = false;
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
  if (!cancel_caption_.empty()) take_input(owner_, true);
  cancel_caption_.clear();
  if (window_ != nullptr) DestroyWindow(window_);
  window_ = text_ = bar_ = nullptr;
  begun_ = 0;
}

void ProgressWindow::show_when_due() {
  if (begun_ != 0 && !cancel_caption_.empty()) take_input(owner_, false);
  if (begun_ == 0 || GetTickCount64() - begun_ < patience) return;
  if (window_ == nullptr) create();
  UpdateWindow(window_);
}

LRESULT CALLBACK ProgressWindow::handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<ProgressWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr && message == WM_COMMAND && LOWORD(wparam) == IDCANCEL) {
    self->cancelled_ = true;
    EnableWindow(reinterpret_cast<HWND>(lparam), FALSE);
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

void ProgressWindow::create() {
  register_window_class(handle);
  const UINT dpi = owner_ != nullptr ? GetDpiForWindow(owner_) : GetDpiForSystem();
  form::Bounds inner = inner_size;
  if (!cancel_caption_.empty()) inner.height = height_with_button;
  RECT frame = pixels(inner, dpi), around{};
  AdjustWindowRectExForDpi(&frame, style, FALSE, WS_EX_TOPMOST, dpi);
  const int width = frame.right - frame.left, height = frame.bottom - frame.top;
  GetWindowRect(owner_ != nullptr ? owner_ : GetDesktopWindow(), &around);
  window_ = CreateWindowExW(WS_EX_TOPMOST, window_class, support::wide(title_).c_str(), style,
                            (around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2, width,
                            height, owner_, nullptr, nullptr, nullptr);
  text_ = add(L"STATIC", SS_NOPREFIX, text_place, window_, dpi);
  bar_ = add(PROGRESS_CLASSW, 0, bar_place, window_, dpi);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  const auto font = reinterpret_cast<WPARAM>(fonts_.font(font_, TextStyle::Normal, dpi));
  SendMessageW(text_, WM_SETFONT, font, FALSE);
  if (!cancel_caption_.empty()) {
    const HWND button = add(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, button_place, window_, dpi);
    SetWindowLongPtrW(button, GWLP_ID, IDCANCEL);
    SetWindowTextW(button, support::wide(cancel_caption_).c_str());
    SendMessageW(button, WM_SETFONT, font, FALSE);
  }
  SetWindowTextW(text_, support::wide(caption_).c_str());
  SendMessageW(bar_, PBM_SETRANGE32, 0, maximum_);
  SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(value_), 0);
  ShowWindow(window_, SW_SHOWNA);
}

}  // namespace wizard::win32
