#include "wizard/win32/container_window.h"

#include <iterator>
#include <string_view>

#include "wizard/win32/drawn_controls.h"

namespace wizard::win32 {
namespace {

/// A list of several lines sends its window what it would send a dialog: Esc as WM_CLOSE, Enter by the default button.
bool belongs_to_form(UINT message) {
  if (asks_for_colours(message)) return true;
  switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_CLOSE:
    case WM_NEXTDLGCTL:
    case DM_GETDEFID:
    case DM_SETDEFID:
      return true;
    default:
      return false;
  }
}

bool is_shown_image(HWND window) {
  const LONG style = GetWindowLongW(window, GWL_STYLE);
  if ((style & WS_VISIBLE) == 0 || (style & SS_TYPEMASK) != SS_OWNERDRAW) return false;
  wchar_t name[16]{};
  GetClassNameW(window, name, std::size(name));
  return std::wstring_view(name) == L"Static";
}

/// All but the images, which draw their own ground: what is erased below one is not drawn again before it changes.
void erase(HWND window, HDC target) {
  const int saved = SaveDC(target);
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!is_shown_image(child)) continue;
    RECT place;
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    ExcludeClipRect(target, place.left, place.top, place.right, place.bottom);
  }
  RECT whole;
  GetClientRect(window, &whole);
  FillRect(target, &whole, page_brush());
  RestoreDC(target, saved);
}

LRESULT CALLBACK container_procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  // The page's own scroll bar names no window.
  if (message == WM_VSCROLL && second == 0) second = reinterpret_cast<LPARAM>(window);
  if (belongs_to_form(message)) return SendMessageW(GetParent(window), message, first, second);
  if (message != WM_ERASEBKGND) return DefWindowProcW(window, message, first, second);
  erase(window, reinterpret_cast<HDC>(first));
  return 1;
}

}  // namespace

void register_container_class(HINSTANCE instance) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = container_procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = container_class;
  RegisterClassExW(&description);
}

}  // namespace wizard::win32
