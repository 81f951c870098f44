// The lines of a page: which controls stand beside each other, and what each of them is to its neighbours. Read from
// the places that the page's table gives its controls; a window decides how much room each gets.
#pragma once

#include <cstdint>
#include <vector>

#include "wizard/form/form.h"

namespace wizard {

/// What a line holds.
enum class LineKind : std::uint8_t {
  Heading,   ///< the page's heading, and perhaps a picture at its end
  Text,      ///< one label
  Fields,    ///< fields, options or buttons
  Group,     ///< a box with lines of its own
  Pictures,  ///< one picture, and others that lie over it
  Area,      ///< what has a size of its own choice and scrolls inside: a picture box, a text of several lines
};

/// One control with what belongs to it; both may be missing.
struct Cell {
  const form::Control* label = nullptr;    ///< before the control, or above it
  const form::Control* control = nullptr;  ///< null where the cell is a text alone
  const form::Control* unit = nullptr;     ///< behind the control
};

struct PageLine {
  LineKind kind = LineKind::Fields;
  std::vector<Cell> cells = {};       ///< from left to right; of pictures the largest comes first
  bool indented = false;              ///< explains the line above it
  std::vector<PageLine> inner = {};   ///< of a group
  std::vector<PageLine> beside = {};  ///< of an area: lines of a column at its side
};

/// The lines of a page of the form, from top to bottom. Controls that are never seen are in none. They point to the
/// form's controls.
std::vector<PageLine> page_lines(const form::Form& form, const form::Control& page);

}  // namespace wizard
