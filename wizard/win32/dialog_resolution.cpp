#include "wizard/win32/dialog_resolution.h"

namespace wizard::win32 {

void take_resolution(HWND window, UINT from, UINT to, const RECT& suggested, const std::function<HFONT(HWND)>& font) {
  const auto rescaled = [=](LONG length) {
    return MulDiv(static_cast<int>(length), static_cast<int>(to), static_cast<int>(from));
  };
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    RECT place;
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font(child)), FALSE);
    SetWindowPos(child, nullptr, rescaled(place.left), rescaled(place.top), rescaled(place.right - place.left),
                 rescaled(place.bottom - place.top), SWP_NOZORDER | SWP_NOACTIVATE);
  }
  SetWindowPos(window, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace wizard::win32
