#include "wizard/home_page.h"

#include <fmt/core.h>

#include <algorithm>
#include <vector>

#include "support/encoding.h"
#include "support/text.h"
#include "wizard/finish_report.h"

namespace wizard {
namespace {

/// True for a slot whose chart was offered and is not chosen. A slot with a chart that this program does not know keeps
/// it.
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
  // Slots behind the chosen charts are emptied, so that a chart that was unticked disappears from the home page.
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

namespace {

constexpr std::size_t chart_field = 2;

std::vector<std::string> fields_of(std::string_view slot) {
  std::vector<std::string> fields;
  support::Split(slot, fields, "|");
  return fields;
}

}  // namespace

std::string home_page_section(const Context& context, std::string_view file) {
  return context.ini_value(file, "setup", "homepage");
}

std::string slot_entry(int slot) { return fmt::format("CHART{}", slot); }

std::string chart_in_slot(std::string_view slot) {
  const auto fields = fields_of(slot);
  return fields.size() > chart_field ? fields[chart_field] : std::string();
}

std::string slot_with_chart(std::string_view slot, std::string_view chart) {
  auto fields = fields_of(slot);
  fields.resize(std::max(fields.size(), chart_field + 1));
  fields[chart_field] = chart;
  std::string joined = fields.front();
  for (std::size_t n = 1; n < fields.size(); ++n) joined += "|" + fields[n];
  return joined;
}

}  // namespace wizard
