// The charts of the diary's home page in "home.ini".
#pragma once

#include <vector>

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finish_writer.h"

namespace wizard {

/// Writes the chosen charts into the home page's slots. Where no charts were offered, nobody has chosen anything and
/// the home page stays as it is.
void update_home_page(const Context& context, const std::vector<ChartChoice>& charts, FinishWriter& writer);

}  // namespace wizard
