// The charts of the diary's home page in "home.ini". The file names a section with the entries "CHART1", "CHART2" …. An
// entry's text is a list separated by "|"; its field 2 is the key of the chart that is shown there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finish_writer.h"

namespace wizard {

/// So many slots are always looked at, even if fewer charts may be chosen.
inline constexpr int home_page_slots = 5;

/// The section of the home page's slots; empty if the file is missing or names none.
std::string home_page_section(const Context& context, std::string_view file);

/// Name of a slot's entry; slots count from 1.
std::string slot_entry(int slot);

/// The chart in a slot's text; empty if there is none.
std::string chart_in_slot(std::string_view slot);

/// A slot's text with another chart in it. The other fields stay; missing ones are added empty.
std::string slot_with_chart(std::string_view slot, std::string_view chart);

/// Writes the chosen charts into the home page's slots. If no charts were offered, nobody has chosen anything, and the
/// home page stays as it is.
void update_home_page(const Context& context, const std::vector<ChartChoice>& charts, FinishWriter& writer);

}  // namespace wizard
