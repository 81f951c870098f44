// The one place where a page's controls get their rectangles: its lines are laid below each other, labels beside their
// fields or, in a narrow window, above them; one picture, list or area takes the room that is left.
#pragma once

#include <windows.h>

#include <utility>
#include <vector>

#include "wizard/page_lines.h"
#include "wizard/win32/page_notes.h"
#include "wizard/win32/text_sizes.h"

namespace wizard::win32 {

/// All in pixels of the page's window, as if it were not scrolled.
struct PagePlaces {
  std::vector<std::pair<const form::Control*, RECT>> controls;
  std::vector<std::pair<HWND, RECT>> notes;
  int height = 0;  ///< that the page needs; more than it was offered where the page has to scroll
};

/// Lays the lines out in a page of this size. A control that lies inside another window than the page's is not among
/// the places.
PagePlaces place_page(const std::vector<PageLine>& lines, const PageNotes& notes, const TextSizes& sizes, SIZE page);

}  // namespace wizard::win32
