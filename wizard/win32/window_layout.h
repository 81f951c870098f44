// The parts of the window: the illustration and the list of steps at the left, the pages beside them, and below the bar
// with progress and buttons. In a narrow window the pages have its whole width.
#pragma once

#include <windows.h>

#include "wizard/form/form.h"
#include "wizard/win32/text_sizes.h"

namespace wizard::win32 {

/// Inner sizes of the window in pixels at 96 to the inch: at first, and the least that the user can give it.
inline constexpr SIZE first_size{744, 521}, least_size{480, 340};

/// All in pixels of the window. What has no room is empty.
struct WindowParts {
  RECT illustration, steps, page, bar, progress, back, next, cancel;
};

WindowParts place_parts(const form::Form& form, const TextSizes& sizes, SIZE window);

}  // namespace wizard::win32
