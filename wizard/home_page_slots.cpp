#include "wizard/home_page_slots.h"

#include <fmt/core.h>

#include <algorithm>
#include <vector>

#include "support/text.h"

namespace wizard {

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
