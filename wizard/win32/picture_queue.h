// The pictures that controls wait for. A page does not wait for them: until its new picture is there, a control shows
// the old one.
#pragma once

#include <deque>

#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {

class PictureQueue {
 public:
  /// Takes note that the control has another picture. It must outlive the queue.
  void add(ShownControl& shown);
  /// Loads one picture that a control in sight waits for or, `ahead`, any control; false where none does.
  bool load_next(bool ahead, const ShownControls& controls);

 private:
  PictureLoader loader_;
  std::deque<ShownControl*> waiting_;
};

}  // namespace wizard::win32
