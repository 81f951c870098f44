// Page "Maßeinheit": the unit of blood glucose.
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/summary_page.h"

namespace wizard {

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow unit_controls[] = {
    grid::heading("Maßeinheit", "L4703"),
    grid::purpose("In welcher Einheit geben Sie Ihren Blutzucker an?", "L4723"),
    {"fraUnit", -1, Frame, "", grid::group(2), "Blutzucker in", "L4750"},
    {"optBGUnit", 0, OptionButton, "fraUnit", grid::option(0), "mg/dL", "L4751"},
    {"optBGUnit", 1, OptionButton, "fraUnit", grid::option(1), "mmol/L", "L4752"},
    grid::why(),
};
// clang-format on

constexpr OptionGroup unit_options[] = {
    {.order = 3, .value_name = "BGUnit", .controls = "optBGUnit", .words = {"0", "1"}}};

void choose_unit(Context&, Pages& pages, int option) {
  if (option == 0 || option == 1) pages.targets.change_unit(GlucoseUnit{static_cast<std::int16_t>(option)});
}

constexpr PageEvent unit_clicks[] = {{"optBGUnit", choose_unit}};

std::vector<std::string> sum_up_unit(const Context& context, const Choices& choices) {
  return option_line(context, choices, 4834, "optBGUnit");
}

}  // namespace

constinit const Page unit_page{.tag = "Maßeinheit",
                               .shown_in = Edition::Both,
                               .controls = unit_controls,
                               .illustration = Illustration::Unit,
                               .why = 4931,
                               .options = unit_options,
                               .clicks = unit_clicks,
                               .summary = sum_up_unit};

}  // namespace wizard
