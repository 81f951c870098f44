// The charts of the diary's home page in "home.ini".
#pragma once

#include "wizard/chart_page.h"
#include "wizard/context.h"
#include "wizard/finish_writer.h"

namespace wizard {

/// Writes the chosen charts into the home page's slots. Where the chart page was never built or has no charts, nobody
/// has chosen anything and the home page stays as it is.
void update_home_page(const Context& context, const ChartPage& charts, FinishWriter& writer);

}  // namespace wizard
