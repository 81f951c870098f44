#include "tests/window/driver/misplaced_controls.h"

namespace window_driver {
namespace {

struct Placed {
  const form::Control* control;
  HWND window, holder;
  RECT place;  ///< inside the holder
};

Placed placed(const WizardProgram& program, const form::Control& control) {
  Placed found{&control, program.control(control.path()), nullptr, {}};
  found.holder = GetParent(found.window);
  GetWindowRect(found.window, &found.place);
  MapWindowPoints(nullptr, found.holder, reinterpret_cast<POINT*>(&found.place), 2);
  return found;
}

bool scrolls(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_VSCROLL) != 0; }

/// A scrolled text or list of charts holds more than it shows. A page that scrolls has a scroll bar that says so.
bool is_inside(const Placed& placed) {
  RECT room;
  GetClientRect(placed.holder, &room);
  const bool sideways = placed.place.left >= 0 && placed.place.right <= room.right;
  const bool is_chart = placed.control->kind() == form::Kind::ChartOption || placed.control->name() == "picSlide";
  return sideways &&
         (is_chart || scrolls(placed.holder) || (placed.place.top >= 0 && placed.place.bottom <= room.bottom));
}

/// Pictures lie over each other on purpose, boxes around their group, and pages below everything that they hold.
bool may_lie_over_others(const form::Control& control) {
  return control.kind() == form::Kind::Image || control.kind() == form::Kind::Frame;
}

bool is_empty(const RECT& place) { return place.right <= place.left || place.bottom <= place.top; }

}  // namespace

std::string misplaced(const WizardProgram& program, const std::vector<const form::Control*>& seen) {
  std::string text;
  std::vector<Placed> all;
  for (const form::Control* control : seen) {
    all.push_back(placed(program, *control));
    if (!is_inside(all.back())) text += control->path() + " is outside; ";
  }
  for (auto one = all.begin(); one != all.end(); ++one) {
    for (auto other = one + 1; other != all.end(); ++other) {
      RECT common;
      if (one->holder != other->holder || may_lie_over_others(*one->control) || may_lie_over_others(*other->control) ||
          is_empty(one->place) || is_empty(other->place))
        continue;
      if (IntersectRect(&common, &one->place, &other->place) != 0)
        text += one->control->path() + " lies over " + other->control->path() + "; ";
    }
  }
  return text;
}

}  // namespace window_driver
