// Page "Darstellung": the style of the diary's main window.
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/summary_page.h"

namespace wizard {

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow style_controls[] = {
    grid::heading("Darstellung", "L4711"),
    grid::purpose("Wie soll das Hauptfenster aussehen?", "L4731"),
    {"optDisplayStyle", 0, OptionButton, "", {120, 1440, 3120, 480}, "Klassisch", "L4784"},
    {"optDisplayStyle", 1, OptionButton, "", {3360, 1440, 3120, 480}, "Modern", "L4785"},
    {"imgDisplayStyle", -1, Image, "", {120, 2040, 4320, 3240}, "Vorschau des Hauptfensters", "L4786"},
};
// clang-format on

// Neither this value nor, in the standard edition, "RunOnStart" has a page in the default lists. Both are preset
// nevertheless, so that the finish writes back what it found.
constexpr OptionGroup style_options[] = {
    {.order = 1, .value_name = "OutlookStyle", .controls = "optDisplayStyle", .words = {"0", "1"}}};
constexpr PagePicture style_pictures[] = {{"imgDisplayStyle", 0, "style0"}};

void show_style_preview(Context& context, Pages&) {
  const bool second = chosen_option(context.form, "optDisplayStyle") == 1;
  context.form.at("imgDisplayStyle").set_picture(second ? "style1" : "style0");
}
void preset_style(Context& context, Pages& pages, const Stored&) { show_style_preview(context, pages); }
void choose_style(Context& context, Pages& pages, int) { show_style_preview(context, pages); }

constexpr PageEvent style_clicks[] = {{"optDisplayStyle", choose_style}};

std::vector<std::string> sum_up_style(const Context& context, const Choices& choices) {
  return option_line(context, choices, 4843, "optDisplayStyle");
}

}  // namespace

constinit const Page style_page{.tag = "Darstellung",
                                .controls = style_controls,
                                .illustration = Illustration::Therapy,
                                .pictures = style_pictures,
                                .options = style_options,
                                .clicks = style_clicks,
                                .preset = preset_style,
                                .enter = show_style_preview,
                                .summary = sum_up_style};

}  // namespace wizard
