// Owners of drawing objects, and drawing in one go.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace wizard::win32 {

struct DeleteGdiObject {
  void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
using Pen = std::unique_ptr<std::remove_pointer_t<HPEN>, DeleteGdiObject>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;
using Brush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DeleteGdiObject>;

struct DeleteContext {
  void operator()(HDC context) const noexcept { DeleteDC(context); }
};
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

/// Selects an object for the lifetime of this one.
class Selection {
 public:
  Selection(HDC context, HGDIOBJ object) : context_(context), before_(SelectObject(context, object)) {}
  ~Selection() { SelectObject(context_, before_); }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

/// A context of the screen (null window) or of a window.
class WindowContext {
 public:
  explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
  ~WindowContext() { ReleaseDC(window_, context_); }
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  HDC get() const noexcept { return context_; }

 private:
  HWND window_;
  HDC context_;
};

/// Answers WM_PAINT in one go, without flicker: `draw(HDC)` draws the whole inside of the window.
template <typename Draw>
void paint_at_once(HWND window, Draw draw) {
  PAINTSTRUCT painting;
  const HDC screen = BeginPaint(window, &painting);
  RECT whole;
  GetClientRect(window, &whole);
  {
    const MemoryContext memory(CreateCompatibleDC(screen));
    const Bitmap canvas(CreateCompatibleBitmap(screen, whole.right, whole.bottom));
    const Selection selection(memory.get(), canvas.get());
    draw(memory.get());
    BitBlt(screen, 0, 0, whole.right, whole.bottom, memory.get(), 0, 0, SRCCOPY);
  }
  EndPaint(window, &painting);
}

}  // namespace wizard::win32
