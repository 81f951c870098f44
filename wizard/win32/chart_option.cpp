#include "wizard/win32/chart_option.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "support/win32/wide.h"
#include "wizard/win32/control_properties.h"
#include "wizard/win32/gdi.h"
#include "wizard/win32/look.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR subclass_id = 1;

struct Chart {
  int title_height = 0;
  Picture thumbnail;
  Picture scaled;  ///< the thumbnail in the size that it was last drawn at
};

void draw_frame(HDC target, RECT edge, bool checked, int line_width) {
  for (int width = checked ? 3 * line_width : line_width; width > 0; --width) {
    FrameRect(target, &edge, brush(checked ? Colour::Choice : Colour::Line));
    InflateRect(&edge, -1, -1);
  }
}

/// As options are drawn: the system's mark is made for light ground.
void draw_mark_in_scheme(HDC target, const RECT& mark, bool checked) {
  draw_smooth(target, mark, page_brush(), [&](HDC fine, int side) {
    const int line = side / 12;
    RECT box{0, 0, side, side};
    FillRect(fine, &box, brush(checked ? Colour::Choice : Colour::Edge));
    if (!checked) {
      InflateRect(&box, -line, -line);
      FillRect(fine, &box, brush(Colour::Field));
      return;
    }
    const Pen pen(CreatePen(PS_SOLID, 2 * line, colour(Colour::ChoiceText)));
    const Selection drawn_with(fine, pen.get());
    const std::array<POINT, 3> tick = {
        {{side / 4, side / 2}, {side * 9 / 20, side * 7 / 10}, {side * 4 / 5, side * 3 / 10}}};
    Polyline(fine, tick.data(), static_cast<int>(tick.size()));
  });
}

/// As the system draws it today; false where there are no themes.
bool draw_themed_mark(HWND window, HDC target, const RECT& mark, bool checked) {
  const HTHEME theme = OpenThemeData(window, VSCLASS_BUTTON);
  if (theme == nullptr) return false;
  const bool enabled = IsWindowEnabled(window) != 0;
  const int state = checked ? (enabled ? CBS_CHECKEDNORMAL : CBS_CHECKEDDISABLED)
                            : (enabled ? CBS_UNCHECKEDNORMAL : CBS_UNCHECKEDDISABLED);
  const bool drawn = SUCCEEDED(DrawThemeBackground(theme, target, BP_CHECKBOX, state, &mark, nullptr));
  CloseThemeData(theme);
  return drawn;
}

/// The check mark stands in the upper left corner, on a ground of its own so that it can be seen over any picture.
void draw_mark(HWND window, HDC target, const RECT& picture, int side, bool checked) {
  const int gap = side / 3;
  RECT mark{picture.left + gap, picture.top + gap, picture.left + gap + side, picture.top + gap + side};
  if (scheme() != Scheme::Light) return draw_mark_in_scheme(target, mark, checked);
  FillRect(target, &mark, page_brush());
  if (draw_themed_mark(window, target, mark, checked)) return;
  DrawFrameControl(target, &mark, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? UINT{DFCS_CHECKED} : 0U));
}

void write_title(HWND window, HDC target, RECT place) {
  const std::wstring title = support::wide(window_text(window));
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, colour(Colour::Text));
  RECT needed{0, 0, place.right - place.left, 0};
  DrawTextW(target, title.c_str(), -1, &needed, DT_WORDBREAK | DT_CALCRECT | DT_NOPREFIX);
  place.top += std::max<LONG>((place.bottom - place.top - needed.bottom) / 2, 0);
  DrawTextW(target, title.c_str(), -1, &place, DT_WORDBREAK | DT_CENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

/// A chart whose picture is missing or broken can still be told by its title.
void draw_thumbnail(HWND window, HDC target, const RECT& place, Chart& chart, int unit) {
  const int width = place.right - place.left, height = place.bottom - place.top;
  if (width <= 0 || height <= 0) return;
  if (!chart.thumbnail) {
    FillRect(target, &place, brush(Colour::Bar));
    return write_title(window, target, {place.left + unit / 2, place.top + unit, place.right - unit / 2, place.bottom});
  }
  if (chart.scaled.width != width || chart.scaled.height != height)
    chart.scaled = scaled(chart.thumbnail, width, height, colour(Colour::Page));
  if (chart.scaled) draw_picture(target, place, chart.scaled);
}

void draw(HWND window, HDC target, Chart& chart) {
  RECT whole;
  GetClientRect(window, &whole);
  FillRect(target, &whole, page_brush());
  const Selection font(target, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
  TEXTMETRICW type{};
  GetTextMetricsW(target, &type);
  const int unit = type.tmHeight;
  const bool checked = SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED;
  const int gap = unit / 5;  // half of what is between two charts
  const RECT place{whole.left + gap, whole.top, whole.right - gap, whole.bottom - chart.title_height};
  const RECT strip{whole.left, place.bottom, whole.right, whole.bottom};
  draw_thumbnail(window, target, place, chart, unit);
  draw_frame(target, place, checked, std::max(1, unit / 15));
  draw_mark(window, target, place, unit, checked);
  write_title(window, target, strip);
  if (GetFocus() == window) FrameRect(target, &strip, brush(Colour::Choice));
}

/// The native control draws at once on these; what it drew is drawn over.
bool redraws(UINT message) {
  switch (message) {
    case BM_SETCHECK:
    case BM_SETSTATE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_SETTEXT:
    case WM_ENABLE:
    case WM_SETFONT:
      return true;
    default:
      return false;
  }
}

LRESULT CALLBACK chart_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR data) {
  auto* chart = reinterpret_cast<Chart*>(data);
  if (message == WM_PAINT) {
    paint_at_once(window, [&](HDC target) { draw(window, target, *chart); });
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, chart_procedure, subclass_id);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    const std::unique_ptr<Chart> end(chart);
    return DefSubclassProc(window, message, first, second);
  }
  const LRESULT result = DefSubclassProc(window, message, first, second);
  if (redraws(message)) InvalidateRect(window, nullptr, FALSE);
  return result;
}

Chart* chart_of(HWND window) { return reinterpret_cast<Chart*>(GetWindowLongPtrW(window, GWLP_USERDATA)); }

}  // namespace

void draw_as_chart(HWND check_box, int title_height) {
  if (Chart* chart = chart_of(check_box)) {
    chart->title_height = title_height;
    return;
  }
  auto chart = std::make_unique<Chart>();
  chart->title_height = title_height;
  if (SetWindowSubclass(check_box, chart_procedure, subclass_id, reinterpret_cast<DWORD_PTR>(chart.get()))) {
    SetWindowLongPtrW(check_box, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(chart.release()));
  }
}

void set_thumbnail(HWND check_box, Picture thumbnail) {
  if (Chart* chart = chart_of(check_box)) {
    chart->thumbnail = std::move(thumbnail);
    chart->scaled = {};
    InvalidateRect(check_box, nullptr, FALSE);
  }
}

}  // namespace wizard::win32
