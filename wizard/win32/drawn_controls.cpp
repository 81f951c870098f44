#include "wizard/win32/drawn_controls.h"

// These need windows.h before them.
#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "wizard/win32/drawn_button.h"
#include "wizard/win32/drawn_drop_list.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR dress_id = 2;
/// The theme that newer systems have for dark scroll bars.
constexpr wchar_t dark_theme[] = L"DarkMode_Explorer";

/// With high contrast too: the themes of the system need not know its colours.
bool is_drawn_here() { return scheme() != Scheme::Light; }

void draw_edge(HDC target, RECT whole, bool focused) {
  FrameRect(target, &whole, brush(focused ? Colour::Choice : Colour::Edge));
}

/// The edge of a field lies outside what it paints itself.
void paint_field_edge(HWND field) {
  RECT whole;
  GetWindowRect(field, &whole);
  OffsetRect(&whole, -whole.left, -whole.top);
  const HDC target = GetWindowDC(field);
  const bool is_typed_into = (GetWindowLongPtrW(field, GWL_STYLE) & ES_READONLY) == 0;
  draw_edge(target, whole, GetFocus() == field);
  InflateRect(&whole, -1, -1);
  if ((GetWindowLongPtrW(field, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0)
    FrameRect(target, &whole, brush(is_typed_into ? Colour::Field : Colour::Page));
  ReleaseDC(field, target);
}

void draw_arrow(HDC target, const RECT& place) {
  const int half = std::max<int>(2, (place.bottom - place.top) / 8);
  const int middle = (place.left + place.right) / 2, top = (place.top + place.bottom - half) / 2;
  const std::array<POINT, 3> points = {{{middle - half, top}, {middle + half, top}, {middle, top + half}}};
  const Selection fill(target, brush(Colour::FieldText));
  const Selection line(target, GetStockObject(NULL_PEN));
  Polygon(target, points.data(), static_cast<int>(points.size()));
}

void draw_selected_text(HWND list, HDC target, RECT place) {
  const auto selected = static_cast<WPARAM>(SendMessageW(list, CB_GETCURSEL, 0, 0));
  const LRESULT length = SendMessageW(list, CB_GETLBTEXTLEN, selected, 0);
  if (length <= 0) return;
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  SendMessageW(list, CB_GETLBTEXT, selected, reinterpret_cast<LPARAM>(text.data()));
  const Selection font(target, reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0)));
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, colour(IsWindowEnabled(list) != 0 ? Colour::FieldText : Colour::Disabled));
  InflateRect(&place, -(place.bottom - place.top) / 6, 0);
  DrawTextW(target, text.c_str(), static_cast<int>(length), &place,
            DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

/// The part of a combo box that is always there; a field in it draws itself.
void paint_list(HWND list) {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  GetComboBoxInfo(list, &parts);
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(list, &painting);
  RECT whole;
  GetClientRect(list, &whole);
  const bool has_field = (GetWindowLongPtrW(list, GWL_STYLE) & 3) == CBS_DROPDOWN;
  if (has_field) ExcludeClipRect(target, parts.rcItem.left, parts.rcItem.top, parts.rcItem.right, parts.rcItem.bottom);
  FillRect(target, &whole, brush(Colour::Field));
  const HWND focus = GetFocus();
  draw_edge(target, whole, focus == list || IsChild(list, focus) != 0);
  draw_arrow(target, parts.rcButton);
  if (!has_field) draw_selected_text(list, target, parts.rcItem);
  EndPaint(list, &painting);
}

bool shows_focus(UINT message) {
  return message == WM_SETFOCUS || message == WM_KILLFOCUS || message == WM_ENABLE || message == CB_SETCURSEL ||
         message == WM_COMMAND;
}

LRESULT CALLBACK field_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, field_procedure, dress_id);
  const LRESULT result = DefSubclassProc(window, message, first, second);
  if (is_drawn_here() && (message == WM_NCPAINT || shows_focus(message))) paint_field_edge(window);
  return result;
}

LRESULT CALLBACK list_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR) {
  if (is_drawn_here() && message == WM_PAINT && first == 0) {
    paint_list(window);
    return 0;
  }
  if (is_drawn_here() && message == WM_ERASEBKGND) return 1;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, list_procedure, dress_id);
  const LRESULT result = DefSubclassProc(window, message, first, second);
  // The native control has drawn some of these at once.
  if (is_drawn_here() && shows_focus(message)) InvalidateRect(window, nullptr, FALSE);
  return result;
}

struct Dress {
  std::wstring_view window_class;
  SUBCLASSPROC procedure;  ///< null: the theme is all
};

constexpr Dress dresses[] = {{WC_EDITW, field_procedure},
                             {WC_COMBOBOXW, list_procedure},
                             {WC_BUTTONW, drawn_button_procedure},
                             {WC_SCROLLBARW, nullptr}};

const Dress* dress_of(HWND control) {
  std::array<wchar_t, 32> name{};
  GetClassNameW(control, name.data(), static_cast<int>(name.size()));
  for (const Dress& dress : dresses) {
    if (CompareStringOrdinal(dress.window_class.data(), -1, name.data(), -1, TRUE) == CSTR_EQUAL) return &dress;
  }
  return nullptr;
}

bool is_drawn_here(const Dress& dress, HWND control) {
  return is_drawn_here() || (dress.procedure == drawn_button_procedure && is_group_box(control));
}

BOOL CALLBACK dress_or_undress(HWND control, LPARAM) {
  const Dress* dress = dress_of(control);
  if (dress == nullptr) return TRUE;
  if (dress->procedure != nullptr) {
    if (is_drawn_here(*dress, control))
      SetWindowSubclass(control, dress->procedure, dress_id, 0);
    else
      RemoveWindowSubclass(control, dress->procedure, dress_id);
  }
  if (dress->procedure == list_procedure) draw_drop_list(control, is_drawn_here());
  SetWindowTheme(control, scheme() == Scheme::Dark ? dark_theme : nullptr, nullptr);
  return TRUE;
}

}  // namespace

// A procedure in between costs time with every message, so light controls have none.
void dress_control(HWND control) {
  const Dress* dress = dress_of(control);
  if (dress != nullptr && is_drawn_here(*dress, control)) dress_or_undress(control, 0);
}

void dress_again(HWND frame) {
  dress_frame(frame);
  EnumChildWindows(frame, dress_or_undress, 0);
  RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

HBRUSH colour_control(HDC target, UINT message, HWND control, Colour text, Colour ground) {
  if (message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX) {
    text = Colour::FieldText;
    ground = Colour::Field;
  }
  if (IsWindowEnabled(control) == 0) text = Colour::Disabled;
  SetTextColor(target, colour(text));
  SetBkColor(target, colour(ground));
  return brush(ground);
}

}  // namespace wizard::win32
