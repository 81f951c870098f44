// How much room texts need, in pixels, in the fonts that the window shows them in.
#pragma once

#include <windows.h>

#include <string>

#include "wizard/form/form.h"
#include "wizard/win32/gdi.h"
#include "wizard/win32/look.h"

namespace wizard::win32 {

class TextSizes {
 public:
  /// The fonts must outlive it. `dpi`: pixels to the inch.
  TextSizes(Fonts& fonts, UINT dpi);

  UINT dpi() const noexcept { return dpi_; }
  /// Pixels of a length that is given for 96 to the inch.
  int scaled(int length) const noexcept { return MulDiv(length, static_cast<int>(dpi_), USER_DEFAULT_SCREEN_DPI); }
  /// The same for a length that has to do with text: it grows with the size of the type.
  int with_text(int length) const;

  /// The control's caption, or its text, on one line.
  int width(const form::Control& control) const;
  /// The same, wrapped into a width; 0 where there is no text.
  int height(const form::Control& control, int width) const;
  /// One line of the control's font.
  int line(const form::Control& control) const;

 private:
  SIZE measure(const form::Control& control, const std::string& text, int width, UINT flags) const;

  Fonts& fonts_;
  UINT dpi_;
  int text_scale_;
  MemoryContext context_{CreateCompatibleDC(nullptr)};
};

}  // namespace wizard::win32
