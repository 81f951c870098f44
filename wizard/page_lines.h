// The lines of a page: which controls are beside each other, and what each of them means to its neighbours. They follow
// from the bounds in the page's table; a window decides how much room each line gets.
#pragma once

#include <cstdint>
#include <vector>

#include "wizard/form/form.h"

namespace wizard {

/// The kind of a line.
enum class LineKind : std::uint8_t {
  Heading,   ///< the page's heading, and perhaps a picture at its end
  Text,      ///< one label
  Fields,    ///< fields, options or buttons
  Group,     ///< a box with lines of its own
  Pictures,  ///< one picture and others that lie over it
  Area,      ///< a control of any size that scrolls inside: a picture box, a text of several lines
};

/// One control with its label and its unit; both may be missing.
struct Cell {
  const form::Control* label = nullptr;    ///< before the control, or above it
  const form::Control* control = nullptr;  ///< null if the cell is only a text
  const form::Control* unit = nullptr;     ///< behind the control
};

struct PageLine {
  LineKind kind = LineKind::Fields;
  std::vector<Cell> cells = {};       ///< from left to right; among pictures the largest is the first
  bool indented = false;              ///< the line explains the one above it
  std::vector<PageLine> inner = {};   ///< the lines inside a group
  std::vector<PageLine> beside = {};  ///< the lines of a column beside an area
};

/// The lines of a page of the form, from top to bottom, without controls that are never seen. They point to the form's
/// controls.
std::vector<PageLine> page_lines(const form::Form& form, const form::Control& page);

}  // namespace wizard
