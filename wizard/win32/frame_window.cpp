#include "wizard/win32/frame_window.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "wizard/win32/colours.h"

namespace wizard::win32 {
namespace {

constexpr wchar_t frame_class[] = L"FirstStepsAssistant";
constexpr DWORD frame_style =
    WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_THICKFRAME | WS_CLIPCHILDREN;
constexpr DWORD frame_extended_style = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT;

void register_frame_class(HINSTANCE instance) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = DefDlgProcW;
  description.cbWndExtra = DLGWINDOWEXTRA;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = frame_class;
  RegisterClassExW(&description);
}

/// The dialog's own answer to another resolution would be a second one beside ours. Windows 10 has it since version
/// 1703.
void keep_layout_ours(HWND window) {
  // Its two parameters are one enumeration: what not to do, and which of that is meant.
  using SetBehavior = BOOL(WINAPI*)(HWND, int, int);
  constexpr int disable_all = 1;
  const HMODULE user32 = GetModuleHandleW(L"user32.dll");
  const auto set =
      reinterpret_cast<SetBehavior>(reinterpret_cast<void*>(GetProcAddress(user32, "SetDialogDpiChangeBehavior")));
  if (set != nullptr) set(window, disable_all, disable_all);
}

/// What the window's screen leaves to programs.
RECT work_area(HWND window) {
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &screen);
  return screen.rcWork;
}

/// The template of a dialog: its head, no menu, the class, no title of its own.
std::vector<WORD> frame_template() {
  DLGTEMPLATE head{};
  head.style = frame_style;
  head.dwExtendedStyle = frame_extended_style;
  const auto* words = reinterpret_cast<const WORD*>(&head);
  std::vector<WORD> whole(words, words + sizeof head / sizeof(WORD));
  whole.push_back(0);
  std::copy(std::begin(frame_class), std::end(frame_class), std::back_inserter(whole));
  whole.push_back(0);
  return whole;
}

}  // namespace

HWND create_frame_window(HINSTANCE instance, const wchar_t* title, DLGPROC procedure, void* data) {
  register_frame_class(instance);
  const std::vector<WORD> described = frame_template();
  const HWND window = CreateDialogIndirectParamW(instance, reinterpret_cast<const DLGTEMPLATE*>(described.data()),
                                                 nullptr, procedure, reinterpret_cast<LPARAM>(data));
  keep_layout_ours(window);
  dress_frame(window);
  SetWindowTextW(window, title);
  SendMessageW(window, DM_SETDEFID, IDOK, 0);
  // Access keys are underlined from the start: nobody has to know that Alt shows them.
  SendMessageW(window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
  return window;
}

void centre_frame_window(HWND window, SIZE inner) {
  const RECT desk = work_area(window);
  const SIZE room{desk.right - desk.left, desk.bottom - desk.top};
  const SIZE wanted = frame_size(inner, GetDpiForWindow(window));
  const LONG width = std::min(wanted.cx, room.cx), height = std::min(wanted.cy, room.cy);
  SetWindowPos(window, nullptr, desk.left + (room.cx - width) / 2, desk.top + (room.cy - height) / 2, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

SIZE frame_size(SIZE inner, UINT dpi) {
  const auto scaled = [dpi](LONG length) {
    return MulDiv(static_cast<int>(length), static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI);
  };
  RECT frame{0, 0, scaled(inner.cx), scaled(inner.cy)};
  AdjustWindowRectExForDpi(&frame, frame_style, FALSE, frame_extended_style, dpi);
  return {frame.right - frame.left, frame.bottom - frame.top};
}

POINT least_track_size(HWND window, SIZE inner) {
  const RECT desk = work_area(window);
  const SIZE wanted = frame_size(inner, GetDpiForWindow(window));
  return {std::min(wanted.cx, desk.right - desk.left), std::min(wanted.cy, desk.bottom - desk.top)};
}

SIZE size_in_resolution(HWND window, UINT now, UINT then) {
  RECT inside;
  GetClientRect(window, &inside);
  RECT frame{0, 0, MulDiv(inside.right, static_cast<int>(then), static_cast<int>(now)),
             MulDiv(inside.bottom, static_cast<int>(then), static_cast<int>(now))};
  AdjustWindowRectExForDpi(&frame, frame_style, FALSE, frame_extended_style, then);
  return {frame.right - frame.left, frame.bottom - frame.top};
}

/// Shared icons: the system frees them.
void set_frame_icons(HWND window, UINT dpi) {
  const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window, GWLP_HINSTANCE));
  const auto set = [&](WPARAM which, int width, int height) {
    const HANDLE icon = LoadImageW(instance, MAKEINTRESOURCEW(1), IMAGE_ICON, GetSystemMetricsForDpi(width, dpi),
                                   GetSystemMetricsForDpi(height, dpi), LR_SHARED);
    SendMessageW(window, WM_SETICON, which, reinterpret_cast<LPARAM>(icon));
  };
  set(ICON_BIG, SM_CXICON, SM_CYICON);
  set(ICON_SMALL, SM_CXSMICON, SM_CYSMICON);
}

}  // namespace wizard::win32
