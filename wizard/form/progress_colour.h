// The colour of a progress bar.
#pragma once

#include <cstdint>

#include "wizard/form/form.h"

namespace form {

/// Bar colour as 0xBBGGRR; the background becomes white. Never raises.
void SetProgressbarColor(Control& bar, std::uint32_t colour);

}  // namespace form
