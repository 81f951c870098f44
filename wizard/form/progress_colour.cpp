#include "wizard/form/progress_colour.h"

#include "support/error.h"

namespace form {

void SetProgressbarColor(Control& bar, std::uint32_t colour) {
  support::Procedure procedure{"code!SetProgressbarColor"};
  procedure.step([&] { bar.set_colours({.bar = colour, .background = 0xFFFFFF}); });
}

}  // namespace form
