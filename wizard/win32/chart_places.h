// Where the charts lie in their frame. The form counts in twips, and a row of charts always has the same number of
// them; the window gives a row the pixels that the frame's width and the size of its texts ask for.
#pragma once

#include <windows.h>

#include "wizard/form/form.h"
#include "wizard/win32/text_sizes.h"

namespace wizard::win32 {

class ChartPlaces {
 public:
  /// For a frame of this inner size in pixels. The form's slide and first chart have their bounds already.
  ChartPlaces(const form::Form& form, const TextSizes& sizes, SIZE frame);

  /// Inside the frame.
  RECT slide() const;
  RECT bar() const;
  /// Inside the slide, title included.
  RECT chart(const form::Control& chart) const;
  /// Pixels of the strip with the title, which takes two lines where the charts are small.
  int title_height() const noexcept { return title_height_; }
  /// Twips of the slide that the frame shows at once, and the last position that the bar can have.
  int visible() const;
  int last_position() const;

 private:
  int title_lines(const TextSizes& sizes) const;
  int down(int twips) const;
  int across(int twips) const;

  const form::Control& slide_;
  const form::Control& first_;
  SIZE frame_;
  int bar_width_, title_height_, row_gap_;
};

}  // namespace wizard::win32
