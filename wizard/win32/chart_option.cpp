#include "wizard/win32/chart_option.h"

#include <commctrl.h>

#include <memory>

#include "wizard/win32/look.h"
#include "wizard/win32/text.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR subclass_id = 1;

struct Chart {
  int title_height = 0;
  Picture thumbnail;
};

void draw_frame(HDC target, const RECT& place, bool checked, bool focused) {
  const Brush line(CreateSolidBrush(checked || focused ? choice_colour : line_colour));
  RECT edge = place;
  for (int width = checked ? 3 : 1; width > 0; --width) {
    FrameRect(target, &edge, line.get());
    InflateRect(&edge, -1, -1);
  }
}

void draw_title(HWND window, HDC target, RECT strip, bool checked) {
  const int side = (strip.bottom - strip.top) * 2 / 3;
  const int top = strip.top + (strip.bottom - strip.top - side) / 2;
  RECT mark{strip.left, top, strip.left + side, top + side};
  DrawFrameControl(target, &mark, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? UINT{DFCS_CHECKED} : 0U));
  strip.left = mark.right + side / 3;
  const Selection font(target, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
  SetBkMode(target, TRANSPARENT);
  SetTextColor(target, text_colour);
  const std::wstring title = wide(window_text(window));
  DrawTextW(target, title.c_str(), -1, &strip, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void draw(HWND window, HDC target, const Chart& chart) {
  RECT whole;
  GetClientRect(window, &whole);
  const Brush background(CreateSolidBrush(page_colour));
  FillRect(target, &whole, background.get());
  const bool checked = SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED;
  RECT place{whole.left, whole.top, whole.right, whole.bottom - chart.title_height};
  if (chart.thumbnail) draw_picture(target, place, chart.thumbnail);
  draw_frame(target, place, checked, GetFocus() == window);
  draw_title(window, target, {whole.left, place.bottom, whole.right, whole.bottom}, checked);
  if (GetFocus() == window) DrawFocusRect(target, &whole);
}

void paint(HWND window, const Chart& chart) {
  PAINTSTRUCT painting;
  const HDC screen = BeginPaint(window, &painting);
  RECT whole;
  GetClientRect(window, &whole);
  {
    const MemoryContext memory(CreateCompatibleDC(screen));
    const Bitmap canvas(CreateCompatibleBitmap(screen, whole.right, whole.bottom));
    const Selection selection(memory.get(), canvas.get());
    draw(window, memory.get(), chart);
    BitBlt(screen, 0, 0, whole.right, whole.bottom, memory.get(), 0, 0, SRCCOPY);
  }
  EndPaint(window, &painting);
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

LRESULT CALLBACK chart_procedure(HWND window, UINT message, WPARAM wide_parameter, LPARAM long_parameter, UINT_PTR,
                                 DWORD_PTR data) {
  auto* chart = reinterpret_cast<Chart*>(data);
  if (message == WM_PAINT) {
    paint(window, *chart);
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, chart_procedure, subclass_id);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    const std::unique_ptr<Chart> end(chart);
    return DefSubclassProc(window, message, wide_parameter, long_parameter);
  }
  const LRESULT result = DefSubclassProc(window, message, wide_parameter, long_parameter);
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
    InvalidateRect(check_box, nullptr, FALSE);
  }
}

}  // namespace wizard::win32
