// Page "Eingabe": how the diary's entries are made by default.
#include "wizard/page_grid.h"
#include "wizard/page_rows.h"
#include "wizard/summary_lines.h"

namespace wizard {

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow entry_controls[] = {
    grid::heading("Eingabe", "L4710"),
    grid::purpose("Wie möchten Sie Ihre Werte am liebsten eingeben?", "L4730"),
    {"optDataEntry", 0, OptionButton, "", {120, 1440, 6360, 480}, "Detaillierte Eingabe", "L4777"},
    {"lblDataEntry", 0, Label, "", {420, 1920, 6060, 720}, "Jeder Wert mit allen Einzelheiten.", "L4780"},
    {"optDataEntry", 1, OptionButton, "", {120, 2700, 6360, 480}, "Eingabe in Tabelle", "L4778"},
    {"lblDataEntry", 1, Label, "", {420, 3180, 6060, 720}, "Viele Werte schnell untereinander.", "L4781"},
    {"optDataEntry", 2, OptionButton, "", {120, 3960, 6360, 480}, "Tagebucheingabe", "L4779"},
    {"lblDataEntry", 2, Label, "", {420, 4440, 6060, 720}, "Ein Tag auf einem Blatt.", "L4782"},
};
// clang-format on

constexpr OptionGroup entry_options[] = {{.order = 2,
                                          .value_name = "DefaultDataEntry",
                                          .read_below = "\\DataEntry",
                                          .written_below = "\\dataentry",
                                          .controls = "optDataEntry",
                                          .words = {"EDIT_DIARY", "EDIT_QUICKENTRY", "EDIT_LOG"}}};

std::vector<std::string> sum_up_entry(const Context& context, const Choices& choices) {
  return option_line(context, choices, 4842, "optDataEntry");
}

}  // namespace

constinit const Page entry_page{.tag = "Eingabe",
                                .step = "eingabe",
                                .shown_in = Edition::Standard,
                                .controls = entry_controls,
                                .illustration = Illustration::Therapy,
                                .options = entry_options,
                                .summary = sum_up_entry};

}  // namespace wizard
