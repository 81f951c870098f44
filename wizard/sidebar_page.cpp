// Page "sidebar": whether the diary shows its side bar.
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/summary_page.h"

namespace wizard {

namespace {

using enum form::Kind;

// The highlight lies above the picture and blinks.
// One control, one line.
// clang-format off
constexpr form::ControlRow sidebar_controls[] = {
    grid::heading("Seitenleiste", "L4713"),
    grid::purpose("Soll die Seitenleiste sichtbar sein?", "L4733"),
    {"optShowSideBar", 0, OptionButton, "", {120, 1440, 3120, 480}, "Seitenleiste aus", "L4789"},
    {"optShowSideBar", 1, OptionButton, "", {3360, 1440, 3120, 480}, "Seitenleiste an", "L4790"},
    {"imgDiary", -1, Image, "", {120, 2040, 4320, 3240}, "Das Hauptfenster ohne Seitenleiste", "L4791"},
    {"imgSidebar", -1, Image, "", {120, 2040, 4320, 3240}, "Das Hauptfenster mit Seitenleiste", "L4788"},
    {"imgSidebarMark", -1, Image, "", {120, 2040, 1080, 3240}, "Hervorhebung", "L4810", false},
};
// clang-format on

constexpr OptionGroup sidebar_options[] = {
    {.order = 5, .value_name = "ShowOutlookbar", .controls = "optShowSideBar", .words = {"0", "1"}}};
constexpr PagePicture sidebar_pictures[] = {
    {"imgDiary", 0, "diary"}, {"imgSidebar", 0, "sidebar"}, {"imgSidebarMark", 0, "sidebar_mark"}};

/// The highlight always blinks; without a side bar it has no picture, because there is nothing to mark.
void show_sidebar(Context& context, bool shown) {
  context.form.at("imgSidebar").set_visible(shown);
  context.form.at("imgSidebarMark").set_picture(shown ? "sidebar_mark" : "");
}

void choose_sidebar(Context& context, Pages&, int option) {
  show_sidebar(context, option == 1);
  context.form.request_redraw(context.form.at("imgSidebar"));
}

void preset_sidebar(Context& context, Pages&, const Stored&) {
  show_sidebar(context, chosen_option(context.form, "optShowSideBar") == 1);
}

void blink_sidebar(Context& context) { blink(context.form, "imgSidebarMark"); }

constexpr PageEvent sidebar_clicks[] = {{"optShowSideBar", choose_sidebar}};

std::vector<std::string> sum_up_sidebar(const Context& context, const Choices& choices) {
  return option_line(context, choices, 4845, "optShowSideBar");
}

}  // namespace

constinit const Page sidebar_page{.tag = "sidebar",
                                  .shown_in = Edition::Both,
                                  .controls = sidebar_controls,
                                  .pictures = sidebar_pictures,
                                  .options = sidebar_options,
                                  .clicks = sidebar_clicks,
                                  .animation = {600, blink_sidebar},
                                  .preset = preset_sidebar,
                                  .summary = sum_up_sidebar};

}  // namespace wizard
