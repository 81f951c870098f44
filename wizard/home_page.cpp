#include "wizard/home_page.h"

#include <algorithm>

#include "support/common_code.h"
#include "support/encoding.h"

namespace wizard {

namespace {

/// A slot's text with another chart in it; the other fields stay, missing ones are added empty.
std::string with_chart(std::string_view slot, std::string_view key) {
  std::vector<std::string> fields;
  support::Split(slot, fields, "|");
  fields.resize(std::max(fields.size(), chart_key_field + 1));
  fields[chart_key_field] = key;
  std::string joined = fields.front();
  for (std::size_t n = 1; n < fields.size(); ++n) joined += "|" + fields[n];
  return joined;
}

/// A chart that was offered and is not chosen. A slot with a chart that this program does not know keeps it.
bool is_unticked(const ChartPage& charts, std::string_view slot) {
  std::vector<std::string> fields;
  support::Split(slot, fields, "|");
  if (fields.size() <= chart_key_field) return false;
  return std::ranges::any_of(charts.options(), [&](const form::Control* option) {
    return support::equal_ignoring_case(option->tag(), fields[chart_key_field]);
  });
}

}  // namespace

void update_home_page(const Context& context, const ChartPage& charts, FinishWriter& writer) {
  if (charts.options().empty()) return;
  const auto chosen = charts.chosen();
  const std::string file = context.config.Path + "home.ini";
  const std::string section = context.ini_value(file, "setup", "homepage");
  if (section.empty()) {
    if (!chosen.empty()) writer.problem(FinishReport::What::IniKey, file, "charts", "the file names no home page");
    return;
  }
  // Behind the chosen charts a slot is emptied of its chart, so that one that was unticked leaves the home page.
  const int slots = std::max(home_page_slots, static_cast<int>(chosen.size()));
  for (int n = 1; n <= slots; ++n) {
    const std::string key = "CHART" + std::to_string(n);
    const std::string slot = context.ini_value(file, section, key);
    const auto chart = static_cast<std::size_t>(n - 1);
    if (chart < chosen.size())
      writer.ini_key(file, section, key, with_chart(slot, chosen[chart]->tag()));
    else if (is_unticked(charts, slot))
      writer.ini_key(file, section, key, with_chart(slot, ""));
  }
}

}  // namespace wizard
