// Pictures: the program's own by resource name, charts by file path, and how they are scaled.
#pragma once

#include <windows.h>
// wincodec.h needs windows.h before it.
#include <wincodec.h>

#include <string_view>

#include "wizard/win32/com.h"
#include "wizard/win32/gdi.h"

namespace wizard::win32 {

/// The program's own pictures are drawn for this resolution.
inline constexpr UINT picture_dpi = 192;

/// A picture in memory: 32 bits a pixel, top row first, colours multiplied by alpha.
struct Picture {
  Bitmap bitmap;
  int width = 0, height = 0;
  bool transparent = false;  ///< some pixel is not opaque
  explicit operator bool() const noexcept { return bitmap != nullptr; }
};

class PictureLoader {
 public:
  PictureLoader() = default;
  /// The program's resource by number or name ("103", "navbar0"), or a picture file (PNG, JPEG) by its path. An empty
  /// picture where it cannot be read.
  Picture load(std::string_view name_or_path);

 private:
  /// Made when first needed: the first page waits for it.
  Com<IWICImagingFactory> imaging_;
};

/// Draws a picture over what is there, without scaling where the sizes are the same.
void draw_picture(HDC target, const RECT& place, const Picture& picture);

/// An opaque copy over a background, in another size (pixels), in half-tone mode; empty where there is no picture.
Picture scaled(const Picture& picture, int width, int height, COLORREF background);

/// Copies a part of a context's content into a place of another size, in half-tone mode.
void stretch(HDC target, const RECT& place, HDC source, const RECT& part);

/// Draws in fourfold size, by `draw(HDC, side)` on a square ground of the colour, and scales: edges are smooth.
template <typename Draw>
void draw_smooth(HDC target, const RECT& place, HBRUSH ground, Draw draw) {
  constexpr int fine = 4;
  const int side = (place.right - place.left) * fine;
  const MemoryContext memory(CreateCompatibleDC(target));
  const Bitmap canvas(CreateCompatibleBitmap(target, side, side));
  const Selection selection(memory.get(), canvas.get());
  const RECT whole{0, 0, side, side};
  FillRect(memory.get(), &whole, ground);
  draw(memory.get(), side);
  stretch(target, place, memory.get(), whole);
}

}  // namespace wizard::win32
