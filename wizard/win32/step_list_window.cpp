#include "wizard/win32/step_list_window.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "wizard/win32/gdi.h"
#include "wizard/win32/look.h"
#include "wizard/win32/picture.h"

namespace wizard::win32 {
namespace {

struct Steps {
  std::vector<std::wstring> names;
  int current = -1;
  HFONT font = nullptr;
};

Steps* steps_of(HWND window) { return reinterpret_cast<Steps*>(GetWindowLongPtrW(window, GWLP_USERDATA)); }

int line_height(HWND window) {
  const int line = MulDiv(step_height, static_cast<int>(GetDpiForWindow(window)), USER_DEFAULT_SCREEN_DPI);
  return MulDiv(line, text_scale(), usual_text_scale);
}

/// A mark that tells by its shape, not by its colour alone: a tick, a full circle, an empty one.
void draw_state(HDC target, const RECT& line, int place, int current) {
  const int across = (line.bottom - line.top) / 2, top = line.top + (line.bottom - line.top - across) / 2;
  draw_smooth(target, {line.left, top, line.left + across, top + across}, page_brush(), [&](HDC fine, int side) {
    const int width = side / 7, edge = side / 8;
    const std::unique_ptr<std::remove_pointer_t<HPEN>, DeleteGdiObject> pen(
        CreatePen(PS_SOLID, width, colour(place > current ? Colour::Disabled : Colour::Choice)));
    const Selection drawn_with(fine, pen.get());
    if (place < current) {
      const POINT tick[] = {{width, side / 2}, {side / 3 + width / 2, side - 2 * width}, {side - width, width}};
      Polyline(fine, tick, 3);
      return;
    }
    const Selection filled_with(fine, place == current ? brush(Colour::Choice) : GetStockObject(NULL_BRUSH));
    Ellipse(fine, edge, edge, side - edge, side - edge);
  });
}

/// Lines stand closer where that makes room for all of them, as far as their text lets them; where it does not, those
/// around the current one are shown.
void draw(HWND window, HDC target, const Steps& steps) {
  RECT whole;
  GetClientRect(window, &whole);
  FillRect(target, &whole, page_brush());
  const Selection font(target, steps.font);
  TEXTMETRICW type{};
  GetTextMetricsW(target, &type);
  const int count = static_cast<int>(steps.names.size()), usual = line_height(window), margin = usual * 4 / 5;
  const int height = std::clamp<int>(whole.bottom / std::max(count, 1), std::min<int>(type.tmHeight, usual), usual);
  const int lines = std::max(1, static_cast<int>(whole.bottom) / height);
  const int first = std::clamp(steps.current - lines / 2, 0, std::max(0, count - lines));
  const int shown = std::min(count - first, lines);
  SetBkMode(target, TRANSPARENT);
  // Where there is more room than needed, beside the page's heading.
  const int above = std::min((static_cast<int>(whole.bottom) - shown * height) / 2, height);
  for (int n = 0; n < shown; ++n) {
    const int place = first + n, top = above + n * height;
    RECT line{margin, top, whole.right - margin / 2, top + height};
    draw_state(target, line, place, steps.current);
    line.left += usual * 3 / 4;
    SetTextColor(target, colour(place == steps.current ? Colour::Heading : Colour::Text));
    DrawTextW(target, steps.names[static_cast<std::size_t>(place)].c_str(), -1, &line,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
}

LRESULT CALLBACK step_list_procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  Steps* steps = steps_of(window);
  switch (message) {
    case WM_NCCREATE:
      SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(std::make_unique<Steps>().release()));
      break;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      std::unique_ptr<Steps>{steps};
      break;
    case WM_SETFONT:
      if (steps != nullptr) steps->font = reinterpret_cast<HFONT>(first);
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      if (steps == nullptr) break;
      paint_at_once(window, [&](HDC target) { draw(window, target, *steps); });
      return 0;
    default:
      break;
  }
  return DefWindowProcW(window, message, first, second);
}

}  // namespace

void register_step_list_class(HINSTANCE instance) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.style = CS_HREDRAW | CS_VREDRAW;
  description.lpfnWndProc = step_list_procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = step_list_class;
  RegisterClassExW(&description);
}

void show_steps(HWND list, std::vector<std::wstring> steps, int current) {
  Steps* shown = steps_of(list);
  if (shown == nullptr) return;
  shown->names = std::move(steps);
  shown->current = current;
  InvalidateRect(list, nullptr, FALSE);
}

}  // namespace wizard::win32
