#include "wizard/home_page.h"

#include <algorithm>

#include "support/encoding.h"
#include "wizard/finish_problems.h"
#include "wizard/home_page_slots.h"

namespace wizard {

namespace {

/// A chart that was offered and is not chosen. A slot with a chart that this program does not know keeps it.
bool is_unticked(const std::vector<ChartChoice>& charts, std::string_view slot) {
  const std::string chart = chart_in_slot(slot);
  return std::ranges::any_of(charts,
                             [&](const ChartChoice& one) { return support::equal_ignoring_case(one.key, chart); });
}

}  // namespace

void update_home_page(const Context& context, const std::vector<ChartChoice>& charts, FinishWriter& writer) {
  if (charts.empty()) return;
  std::vector<std::string> chosen;
  for (const ChartChoice& chart : charts)
    if (chart.chosen) chosen.push_back(chart.key);
  const std::string file = context.config.Path + "home.ini";
  const std::string section = home_page_section(context, file);
  if (section.empty()) {
    if (!chosen.empty())
      writer.problem(FinishReport::What::IniKey, file, "charts", "the file names no home page",
                     reason_text::no_home_page);
    return;
  }
  // Behind the chosen charts a slot is emptied of its chart, so that one that was unticked leaves the home page.
  const int slots = std::max(home_page_slots, static_cast<int>(chosen.size()));
  for (int n = 1; n <= slots; ++n) {
    const std::string entry = slot_entry(n);
    const std::string slot = context.ini_value(file, section, entry);
    const auto chart = static_cast<std::size_t>(n - 1);
    if (chart < chosen.size())
      writer.ini_key(file, section, entry, slot_with_chart(slot, chosen[chart]));
    else if (is_unticked(charts, slot))
      writer.ini_key(file, section, entry, slot_with_chart(slot, ""));
  }
}

}  // namespace wizard
