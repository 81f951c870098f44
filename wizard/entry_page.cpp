// Page "Eingabe": how the diary's entries are made by default.
#include <fmt/core.h>

#include <algorithm>

#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/summary_page.h"

namespace wizard {

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow entry_controls[] = {
    grid::heading("Eingabe", "L4710"),
    grid::purpose("Wie möchten Sie Ihre Werte am liebsten eingeben?", "L4730"),
    {"optDataEntry", 0, OptionButton, "", {120, 1440, 6360, 360}, "Detaillierte Eingabe", "L4777"},
    {"lblDataEntry", 0, Label, "", {420, 1800, 6060, 480}, "Jeder Wert mit allen Einzelheiten.", "L4780"},
    {"optDataEntry", 1, OptionButton, "", {120, 2280, 6360, 360}, "Eingabe in Tabelle", "L4778"},
    {"lblDataEntry", 1, Label, "", {420, 2640, 6060, 480}, "Viele Werte schnell untereinander.", "L4781"},
    {"optDataEntry", 2, OptionButton, "", {120, 3120, 6360, 360}, "Tagebucheingabe", "L4779"},
    {"lblDataEntry", 2, Label, "", {420, 3480, 6060, 480}, "Ein Tag auf einem Blatt.", "L4782"},
    {"imgDataEntry", -1, Image, "", {120, 4020, 1920, 1440}, "So sieht die gewählte Eingabe aus", "L4941"},
};
// clang-format on

constexpr OptionGroup entry_options[] = {{.order = 2,
                                          .value_name = "DefaultDataEntry",
                                          .read_below = "\\DataEntry",
                                          .written_below = "\\dataentry",
                                          .controls = "optDataEntry",
                                          .words = {"EDIT_DIARY", "EDIT_QUICKENTRY", "EDIT_LOG"}}};

constexpr PagePicture entry_pictures[] = {{"imgDataEntry", 0, "entry0"}};

void show_entry(Context& context, Pages&) {
  const int chosen = std::max(chosen_option(context.form, "optDataEntry"), 0);
  context.form.at("imgDataEntry").set_picture(fmt::format("entry{}", chosen));
}
void choose_entry(Context& context, Pages& pages, int) { show_entry(context, pages); }

constexpr PageEvent entry_clicks[] = {{"optDataEntry", choose_entry}};

std::vector<std::string> sum_up_entry(const Context& context, const Choices& choices) {
  return option_line(context, choices, 4842, "optDataEntry");
}

}  // namespace

constinit const Page entry_page{.tag = "Eingabe",
                                .step = "eingabe",
                                .shown_in = Edition::Standard,
                                .controls = entry_controls,
                                .illustration = Illustration::Therapy,
                                .pictures = entry_pictures,
                                .options = entry_options,
                                .clicks = entry_clicks,
                                .enter = show_entry,
                                .summary = sum_up_entry};

}  // namespace wizard
