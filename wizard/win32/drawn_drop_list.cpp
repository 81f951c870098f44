#include "wizard/win32/drawn_drop_list.h"

// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <string>

#include "wizard/win32/colours.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR drop_list_id = 5;

std::wstring item_text(HWND list, WPARAM item) {
  const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, item, 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  SendMessageW(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void draw_item(HWND list, HDC target, int item, bool selected) {
  RECT place{};
  SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
  if (selected) FillRect(target, &place, brush(Colour::Choice));
  SetTextColor(target, colour(selected ? Colour::ChoiceText : Colour::FieldText));
  place.left += (place.bottom - place.top) / 8;
  const std::wstring text = item_text(list, static_cast<WPARAM>(item));
  DrawTextW(target, text.c_str(), static_cast<int>(text.size()), &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void draw_list(HWND list, HDC target) {
  RECT whole;
  GetClientRect(list, &whole);
  FillRect(target, &whole, brush(Colour::Field));
  const Selection font(target, reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0)));
  SetBkMode(target, TRANSPARENT);
  const auto ask = [list](UINT question) { return static_cast<int>(SendMessageW(list, question, 0, 0)); };
  const int count = ask(LB_GETCOUNT), selected = ask(LB_GETCURSEL);
  const int height = std::max(static_cast<int>(SendMessageW(list, LB_GETITEMHEIGHT, 0, 0)), 1),
            first = ask(LB_GETTOPINDEX);
  const int end = std::min(count, first + static_cast<int>(whole.bottom) / height + 1);
  for (int item = first; item < end; ++item) draw_item(list, target, item, item == selected);
}

/// The native list draws another selection at once on these; what it drew is drawn over.
bool may_select(UINT message) {
  return message == LB_SETCURSEL || message == LB_SELECTSTRING || message == WM_KEYDOWN || message == WM_TIMER ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

LRESULT CALLBACK drop_list_procedure(HWND list, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR) {
  if (message == WM_PAINT) {
    paint_at_once(list, [list](HDC target) { draw_list(list, target); });
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(list, drop_list_procedure, drop_list_id);
  if (!may_select(message)) return DefSubclassProc(list, message, first, second);
  const LRESULT before = DefSubclassProc(list, LB_GETCURSEL, 0, 0);
  const LRESULT result = DefSubclassProc(list, message, first, second);
  if (DefSubclassProc(list, LB_GETCURSEL, 0, 0) != before) InvalidateRect(list, nullptr, FALSE);
  return result;
}

}  // namespace

void draw_drop_list(HWND combo_box, bool drawn_here) {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  if (GetComboBoxInfo(combo_box, &parts) == 0 || parts.hwndList == nullptr) return;
  if (drawn_here)
    SetWindowSubclass(parts.hwndList, drop_list_procedure, drop_list_id, 0);
  else
    RemoveWindowSubclass(parts.hwndList, drop_list_procedure, drop_list_id);
}

}  // namespace wizard::win32
