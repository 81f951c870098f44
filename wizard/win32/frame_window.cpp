#include "wizard/win32/frame_window.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace wizard::win32 {
namespace {

constexpr wchar_t frame_class[] = L"FirstStepsAssistant";
constexpr DWORD frame_style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr DWORD frame_extended_style = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT;

void register_frame_class(HINSTANCE instance) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = DefDlgProcW;
  description.cbWndExtra = DLGWINDOWEXTRA;
  description.hInstance = instance;
  description.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(1));
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = frame_class;
  RegisterClassExW(&description);
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
  SetWindowTextW(window, title);
  SendMessageW(window, DM_SETDEFID, IDOK, 0);
  // Access keys are underlined from the start: nobody has to know that Alt shows them.
  SendMessageW(window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
  return window;
}

void centre_frame_window(HWND window, SIZE inner) {
  RECT frame{0, 0, inner.cx, inner.cy};
  AdjustWindowRectExForDpi(&frame, frame_style, FALSE, frame_extended_style, GetDpiForWindow(window));
  const LONG width = frame.right - frame.left, height = frame.bottom - frame.top;
  RECT desk;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &desk, 0);
  const LONG left = std::max(desk.left, desk.left + (desk.right - desk.left - width) / 2);
  const LONG top = std::max(desk.top, desk.top + (desk.bottom - desk.top - height) / 2);
  SetWindowPos(window, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace wizard::win32
