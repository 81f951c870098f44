// Page "start": what the diary shows when it starts.
#include <fmt/core.h>

#include <algorithm>

#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/summary_page.h"

namespace wizard {

namespace {

using enum form::Kind;

// The highlight lies above the picture and blinks.
// One control, one line.
// clang-format off
constexpr form::ControlRow start_controls[] = {
    grid::heading("Beim Start", "L4714"),
    grid::purpose("Was soll das Programm nach dem Start zeigen?", "L4734"),
    {"optShowStart", 0, OptionButton, "", {120, 1500, 6360, 360}, "Startseite", "L4793"},
    {"optShowStart", 1, OptionButton, "", {120, 1920, 6360, 360}, "Patientenübersicht", "L4794"},
    {"optShowStart", 2, OptionButton, "", {120, 2340, 6360, 360}, "Zuletzt verwendete Ansicht", "L4795"},
    {"imgStart", -1, Image, "", {120, 2820, 3360, 2520}, "Das Hauptfenster nach dem Start", "L4796"},
    {"imgStartMark", -1, Image, "", {960, 3240, 2520, 2100}, "Hervorhebung", "L4810", false},
};
// clang-format on

constexpr OptionGroup start_options[] = {{.order = 4,
                                          .value_name = "RunOnStart",
                                          .controls = "optShowStart",
                                          .words = {"mnu_home", "mnu_patreview", "mnu_last"},
                                          .default_option = 1}};
constexpr PagePicture start_pictures[] = {{"imgStart", 0, "start0"}, {"imgStartMark", 0, "start_mark"}};

void show_start_view(Context& context, Pages&) {
  const int chosen = std::max(chosen_option(context.form, "optShowStart"), 0);
  context.form.at("imgStart").set_picture(fmt::format("start{}", chosen));
}
void choose_start_view(Context& context, Pages& pages, int) { show_start_view(context, pages); }

constexpr PageEvent start_clicks[] = {{"optShowStart", choose_start_view}};

void blink_start_page(Context& context) { blink(context.form, "imgStartMark"); }

std::vector<std::string> sum_up_start(const Context& context, const Choices& choices) {
  return option_line(context, choices, 4846, "optShowStart");
}

}  // namespace

constinit const Page start_page{.tag = "start",
                                .shown_in = Edition::Professional,
                                .controls = start_controls,
                                .pictures = start_pictures,
                                .options = start_options,
                                .clicks = start_clicks,
                                .animation = {600, blink_start_page},
                                .enter = show_start_view,
                                .summary = sum_up_start};

}  // namespace wizard
