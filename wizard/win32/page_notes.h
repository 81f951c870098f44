// Lines below the fields of a page: what is wrong with them, or what else is worth a word. Whoever makes such a line
// owns its window; the layout gives it a place below the line of its field, in the field's column, and room only while
// it is there.
#pragma once

#include <windows.h>

#include <vector>

#include "wizard/form/form.h"

namespace wizard::win32 {

struct PageNote {
  const form::Control* field = nullptr;  ///< on the page
  HWND window = nullptr;                 ///< a child of the page's window
  /// Pixels that the line needs in a width, at a resolution (pixels to the inch).
  int (*height)(HWND window, int width, UINT dpi) = nullptr;
};

using PageNotes = std::vector<PageNote>;

}  // namespace wizard::win32
