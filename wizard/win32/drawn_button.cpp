#include "wizard/win32/drawn_button.h"

// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <string>

#include "wizard/win32/colours.h"
#include "wizard/win32/gdi.h"
#include "wizard/win32/picture.h"

namespace wizard::win32 {
namespace {

enum class ButtonKind { Push, Option, GroupBox, Other };

ButtonKind kind_of(HWND button) {
  switch (GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
      return ButtonKind::Push;
    case BS_AUTORADIOBUTTON:
    case BS_RADIOBUTTON:
      return ButtonKind::Option;
    case BS_GROUPBOX:
      return ButtonKind::GroupBox;
    default:
      return ButtonKind::Other;
  }
}

std::wstring caption_of(HWND button) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(button)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(button, text.data(), static_cast<int>(text.size()))));
  return text;
}

/// Its height in the width of the place, several lines where it needs them.
int text_height(HDC target, const std::wstring& text, int width) {
  RECT needed{0, 0, width, 0};
  DrawTextW(target, text.c_str(), -1, &needed, DT_WORDBREAK | DT_CALCRECT);
  return needed.bottom;
}

void draw_caption(HDC target, const std::wstring& text, RECT place, UINT alignment, Colour text_colour) {
  const int height = text_height(target, text, place.right - place.left);
  place.top += std::max<LONG>(0, (place.bottom - place.top - height) / 2);
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, colour(text_colour));
  DrawTextW(target, text.c_str(), -1, &place, DT_WORDBREAK | alignment);
}

void draw_push_button(HWND button, HDC target, RECT whole) {
  const LRESULT state = SendMessageW(button, BM_GETSTATE, 0, 0);
  const bool focused = (state & BST_FOCUS) != 0, pressed = (state & BST_PUSHED) != 0;
  const bool is_default = (GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
  const bool enabled = IsWindowEnabled(button) != 0;
  FillRect(target, &whole, brush(enabled && !pressed ? Colour::Button : Colour::Bar));
  FrameRect(target, &whole, brush(focused || is_default ? Colour::Choice : enabled ? Colour::Edge : Colour::Line));
  InflateRect(&whole, -1, -1);
  if (focused) FrameRect(target, &whole, brush(Colour::Choice));
  InflateRect(&whole, -3, -1);
  draw_caption(target, caption_of(button), whole, DT_CENTER, enabled ? Colour::ButtonText : Colour::Disabled);
}

void draw_option_mark(HDC target, const RECT& place, bool chosen) {
  draw_smooth(target, place, page_brush(), [&](HDC fine, int side) {
    const int pixel = side / static_cast<int>(place.right - place.left);
    const Selection no_line(fine, GetStockObject(NULL_PEN));
    const auto circle = [&](int gap, Colour filled) {
      const Selection fill(fine, brush(filled));
      Ellipse(fine, gap, gap, side - gap, side - gap);
    };
    circle(pixel / 2, chosen ? Colour::Choice : Colour::Edge);
    if (!chosen) circle(pixel / 2 + pixel, Colour::Field);
    if (chosen) circle(side / 3, Colour::ChoiceText);
  });
}

void draw_option(HWND button, HDC target, RECT whole) {
  FillRect(target, &whole, page_brush());
  TEXTMETRICW metrics{};
  GetTextMetricsW(target, &metrics);
  const int side = metrics.tmAscent, top = (whole.bottom - side) / 2;
  draw_option_mark(target, {0, top, side, top + side}, SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED);
  RECT text = whole;
  text.left = side + side / 3;
  const std::wstring caption = caption_of(button);
  const bool enabled = IsWindowEnabled(button) != 0;
  draw_caption(target, caption, text, DT_LEFT, enabled ? Colour::Text : Colour::Disabled);
  if (GetFocus() != button) return;
  RECT needed{0, 0, text.right - text.left, 0};
  DrawTextW(target, caption.c_str(), -1, &needed, DT_WORDBREAK | DT_CALCRECT);
  RECT frame{text.left - 2, (whole.bottom - needed.bottom) / 2 - 1, text.left + needed.right + 2,
             (whole.bottom + needed.bottom) / 2 + 1};
  FrameRect(target, &frame, brush(Colour::Choice));
}

/// What lies inside is not its own: only the frame and the caption are drawn.
void draw_group_box(HWND box, HDC target, const RECT& whole) {
  const std::wstring caption = caption_of(box);
  TEXTMETRICW metrics{};
  GetTextMetricsW(target, &metrics);
  RECT frame = whole, text{metrics.tmAveCharWidth, 0, whole.right, metrics.tmHeight};
  frame.top = metrics.tmHeight / 2;
  FrameRect(target, &frame, brush(Colour::Edge));
  DrawTextW(target, caption.c_str(), -1, &text, DT_SINGLELINE | DT_CALCRECT);
  const RECT gap{text.left - metrics.tmAveCharWidth / 2, 0, text.right + metrics.tmAveCharWidth / 2, text.bottom};
  FillRect(target, &gap, page_brush());
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, colour(Colour::Text));
  DrawTextW(target, caption.c_str(), -1, &text, DT_SINGLELINE);
}

void draw_button(HWND button, HDC target) {
  RECT whole;
  GetClientRect(button, &whole);
  const Selection font(target, reinterpret_cast<HGDIOBJ>(SendMessageW(button, WM_GETFONT, 0, 0)));
  if (kind_of(button) == ButtonKind::Push) draw_push_button(button, target, whole);
  if (kind_of(button) == ButtonKind::Option) draw_option(button, target, whole);
  if (kind_of(button) == ButtonKind::GroupBox) draw_group_box(button, target, whole);
}

void paint_button(HWND button) {
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(button, &painting);
  draw_button(button, target);
  EndPaint(button, &painting);
}

/// The native control draws at once on these; what it drew is drawn over.
bool draws_at_once(UINT message) {
  switch (message) {
    case BM_SETCHECK:
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_SETTEXT:
    case WM_ENABLE:
    case WM_UPDATEUISTATE:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool is_group_box(HWND button) { return kind_of(button) == ButtonKind::GroupBox; }

LRESULT CALLBACK drawn_button_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                        DWORD_PTR) {
  const bool ours = is_group_box(window) || (scheme() != Scheme::Light && kind_of(window) != ButtonKind::Other);
  if (ours && message == WM_PAINT) {
    paint_button(window);
    return 0;
  }
  if (ours && message == WM_ERASEBKGND) return 1;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, drawn_button_procedure, id);
  const LRESULT result = DefSubclassProc(window, message, first, second);
  if (ours && draws_at_once(message)) InvalidateRect(window, nullptr, FALSE);
  return result;
}

}  // namespace wizard::win32
