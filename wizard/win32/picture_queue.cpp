#include "wizard/win32/picture_queue.h"

#include <algorithm>
#include <utility>

#include "wizard/win32/chart_option.h"
#include "wizard/win32/page_images.h"

namespace wizard::win32 {

void PictureQueue::add(ShownControl& shown) {
  if (std::ranges::find(waiting_, &shown) == waiting_.end()) waiting_.push_back(&shown);
}

bool PictureQueue::load_next(bool ahead, const ShownControls& controls) {
  const auto next =
      std::ranges::find_if(waiting_, [ahead](const ShownControl* shown) { return ahead || is_seen(*shown->control); });
  if (next == waiting_.end()) return false;
  ShownControl& shown = **next;
  waiting_.erase(next);
  Picture picture = loader_.load(shown.control->picture());
  if (shown.control->kind() == form::Kind::ChartOption) {
    set_thumbnail(shown.window, std::move(picture));
  } else {
    shown.picture = std::move(picture);
    redraw_images_around(*shown.control, controls);
  }
  return true;
}

}  // namespace wizard::win32
