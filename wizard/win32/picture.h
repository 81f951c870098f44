// Pictures: the program's own by resource name, charts by file path, scaled to the pixels that they are shown at.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "wizard/win32/gdi.h"

namespace wizard::win32 {

/// A picture in memory: 32 bits a pixel, top row first, colours multiplied by alpha.
struct Picture {
  Bitmap bitmap;
  int width = 0, height = 0;
  bool transparent = false;  ///< some pixel is not opaque
  explicit operator bool() const noexcept { return bitmap != nullptr; }
};

/// The program's resource by number or name ("103", "navbar0"), or a picture file (PNG, JPEG) by its path. An empty
/// picture where it cannot be read.
Picture load_picture(std::string_view name_or_path);

/// Draws the whole picture into a rectangle, scaled in half-tone mode; transparent pixels show what was there before.
void draw_picture(HDC target, const RECT& place, const Picture& picture);

/// The largest rectangle of the picture's shape inside `place`, centred.
RECT fitted(const RECT& place, const Picture& picture);

}  // namespace wizard::win32
