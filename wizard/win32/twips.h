// The unit of the form on a screen: twips, 1440 to the inch, as pixels, `dpi` to the inch.
#pragma once

#include <windows.h>

#include <cstdint>

#include "wizard/form/form.h"

namespace wizard::win32 {

inline constexpr int twips_to_the_inch = 1440;

inline int pixels(std::int32_t twips, UINT dpi) { return MulDiv(twips, static_cast<int>(dpi), twips_to_the_inch); }

inline RECT pixels(const form::Bounds& bounds, UINT dpi) {
  return {pixels(bounds.left, dpi), pixels(bounds.top, dpi), pixels(bounds.left + bounds.width, dpi),
          pixels(bounds.top + bounds.height, dpi)};
}

/// The size of what begins in the upper left corner.
inline SIZE inner_size(const form::Bounds& bounds, UINT dpi) {
  return {pixels(bounds.left + bounds.width, dpi), pixels(bounds.top + bounds.height, dpi)};
}

inline std::int32_t twips(int pixels, UINT dpi) { return MulDiv(pixels, twips_to_the_inch, static_cast<int>(dpi)); }

}  // namespace wizard::win32
