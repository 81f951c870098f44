#include "wizard/win32/progress_window.h"

#include <commctrl.h>

#include <utility>

#include "support/win32/wide.h"
#include "support/yield_to_input.h"
#include "wizard/win32/dialog_resolution.h"
#include "wizard/win32/drawn_controls.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

// Milliseconds: until the window comes up, and between two looks at what has come in.
constexpr ULONGLONG patience = 400, pause_between_answers = 50;
// Twips.
constexpr form::Bounds progress_size{0, 0, 5400, 1380}, text_place{180, 180, 5040, 600}, bar_place{180, 960, 5040, 240},
    button_place{3900, 1380, 1320, 390};
constexpr std::int32_t height_with_button = 1950;
constexpr wchar_t window_class[] = L"FirstStepsProgress";
constexpr DWORD style = WS_POPUP | WS_CAPTION;

void register_window_class(WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
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
  cancelled_ = false;
  begun_ = answered_ = GetTickCount64();
  hold_session();
}

void ProgressWindow::set_caption(std::string_view caption) {
  caption_ = caption;
  if (text_ != nullptr) SetWindowTextW(text_, support::wide(caption_).c_str());
  at_work();
}

void ProgressWindow::set_value(std::int32_t value) {
  value_ = value;
  if (bar_ != nullptr) SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(value_), 0);
  at_work();
}

void ProgressWindow::finish() {
  release();
  cancel_caption_.clear();
  if (window_ != nullptr) DestroyWindow(window_);
  window_ = text_ = bar_ = nullptr;
  begun_ = 0;
}

/// A message box of the window below gives it its input back: it is taken away again whenever something is told.
void ProgressWindow::at_work() {
  if (begun_ == 0 || answering_) return;
  if (owner_ != nullptr && IsWindowEnabled(owner_) != 0) {
    if (!owner_disabled_) focus_before_ = GetFocus();
    EnableWindow(owner_, FALSE);
    owner_disabled_ = true;
  }
  show_when_due();
  const ULONGLONG now = GetTickCount64();
  if (now - answered_ < pause_between_answers) return;
  answered_ = now;
  answering_ = true;
  support::answer_waiting_messages();
  answering_ = false;
}

void ProgressWindow::show_when_due() {
  if (GetTickCount64() - begun_ < patience) return;
  if (window_ == nullptr) create();
  UpdateWindow(window_);
}

/// Before there is a window, nothing has begun that would be left half done.
void ProgressWindow::hold_session() {
  const HWND window = owner_ != nullptr ? owner_ : window_;
  if (begun_ == 0 || holding_ != nullptr || window == nullptr) return;
  ShutdownBlockReasonCreate(window, support::wide(caption_.substr(0, caption_.find('\r'))).c_str());
  holding_ = window;
}

void ProgressWindow::release() {
  if (holding_ != nullptr) ShutdownBlockReasonDestroy(holding_);
  holding_ = nullptr;
  if (!std::exchange(owner_disabled_, false)) return;
  EnableWindow(owner_, TRUE);
  SetFocus(focus_before_);
}

LRESULT CALLBACK ProgressWindow::handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<ProgressWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr && message == WM_QUERYENDSESSION) {
    self->end_soon();
    return FALSE;
  }
  if (self != nullptr && message == WM_DPICHANGED) {
    const UINT before = std::exchange(self->dpi_, HIWORD(wparam));
    take_resolution(window, before, self->dpi_, *reinterpret_cast<const RECT*>(lparam),
                    [self](HWND) { return self->fonts_.font(self->font_, TextStyle::Normal, self->dpi_); });
    return 0;
  }
  if (self != nullptr && message == WM_COMMAND && LOWORD(wparam) == IDCANCEL) {
    self->cancelled_ = true;
    EnableWindow(reinterpret_cast<HWND>(lparam), FALSE);
    return 0;
  }
  if (asks_for_colours(message))
    return reinterpret_cast<LRESULT>(colour_control(reinterpret_cast<HDC>(wparam), message,
                                                    reinterpret_cast<HWND>(lparam), Colour::BarText, Colour::Bar));
  if (message != WM_ERASEBKGND) return DefWindowProcW(window, message, wparam, lparam);
  RECT whole;
  GetClientRect(window, &whole);
  FillRect(reinterpret_cast<HDC>(wparam), &whole, brush(Colour::Bar));
  return 1;
}

void ProgressWindow::create() {
  register_window_class(handle);
  const UINT dpi = owner_ != nullptr ? GetDpiForWindow(owner_) : GetDpiForSystem();
  dpi_ = dpi;
  form::Bounds inner = progress_size;
  if (!cancel_caption_.empty()) inner.height = height_with_button;
  RECT frame = pixels(inner, dpi), around{};
  AdjustWindowRectExForDpi(&frame, style, FALSE, WS_EX_TOPMOST, dpi);
  const int width = frame.right - frame.left, height = frame.bottom - frame.top;
  GetWindowRect(owner_ != nullptr ? owner_ : GetDesktopWindow(), &around);
  window_ = CreateWindowExW(WS_EX_TOPMOST, window_class, support::wide(title_).c_str(), style,
                            (around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2, width,
                            height, owner_, nullptr, nullptr, nullptr);
  dress_frame(window_);
  text_ = add(L"STATIC", SS_NOPREFIX, text_place, window_, dpi);
  bar_ = add(PROGRESS_CLASSW, maximum_ == 0 ? PBS_MARQUEE : 0, bar_place, window_, dpi);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  const auto font = reinterpret_cast<WPARAM>(fonts_.font(font_, TextStyle::Normal, dpi));
  SendMessageW(text_, WM_SETFONT, font, FALSE);
  if (!cancel_caption_.empty()) {
    const HWND button = add(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, button_place, window_, dpi);
    SetWindowLongPtrW(button, GWLP_ID, IDCANCEL);
    dress_control(button);
    SetWindowTextW(button, support::wide(cancel_caption_).c_str());
    SendMessageW(button, WM_SETFONT, font, FALSE);
  }
  SetWindowTextW(text_, support::wide(caption_).c_str());
  if (maximum_ == 0) {
    SendMessageW(bar_, PBM_SETMARQUEE, TRUE, 0);
  } else {
    SendMessageW(bar_, PBM_SETRANGE32, 0, maximum_);
    SendMessageW(bar_, PBM_SETPOS, static_cast<WPARAM>(value_), 0);
  }
  hold_session();
  ShowWindow(window_, SW_SHOWNA);
}

}  // namespace wizard::win32
