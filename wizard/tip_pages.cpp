// The pages that explain the diary's window: a sequence of pictures, and a hand that follows it.
#include <algorithm>
#include <charconv>

#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"

namespace wizard {

namespace {

using enum form::Kind;

/// Beside the heading is the button that leads past the tips.
constexpr form::Bounds tip_heading{120, 120, 4380, 480};

// One control, one line.
// clang-format off
constexpr form::ControlRow navigation_tip_controls[] = {
    grid::heading("Tipp: Navigationsleiste", "L4715", tip_heading),
    {"cmdSkipTips", of_page, Button, "", {4620, 120, 1860, 420}, "&Tipps überspringen", "L4923"},
    grid::purpose("Ein Klick auf ein Symbol wechselt den Bereich.", "L4735"),
    {"imgNavBar", 0, Image, "", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804"},
    {"imgNavBar", 1, Image, "", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgNavBar", 2, Image, "", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgNavBar", 3, Image, "", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgNavBar", 4, Image, "", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgCursorHand", -1, Image, "", {825, 2070, 480, 480}, "Mauszeiger", "L4807"},
};
// clang-format on

// clang-format off
constexpr form::ControlRow splits_tip_controls[] = {
    grid::heading("Tipp: Geteiltes Fenster", "L4716", tip_heading),
    {"cmdSkipTips", of_page, Button, "", {4620, 120, 1860, 420}, "&Tipps überspringen", "L4923"},
    grid::purpose("Zwei Ansichten können nebeneinander stehen.", "L4736"),
    {"imgSplitWindow", 0, Image, "", {120, 1440, 4320, 3240}, "Ein geteiltes Fenster des Programms", "L4805"},
    {"imgSplitWindow", 1, Image, "", {120, 1440, 4320, 3240}, "Ein geteiltes Fenster des Programms", "L4805", false},
    {"imgSplitWindow", 2, Image, "", {120, 1440, 4320, 3240}, "Ein geteiltes Fenster des Programms", "L4805", false},
    {"imgSplitBtn", -1, Image, "", {4080, 1620, 240, 240}, "Schaltfläche zum Teilen", "L4816"},
    {"imgcursorHand2", -1, Image, "", {4155, 1830, 480, 480}, "Mauszeiger", "L4807"},
    {"lblSplitDesc", -1, Label, "", {120, 4740, 6360, 660}, "Die Schaltfläche am Rand teilt das Fenster.", "L4873"},
};
// clang-format on

// clang-format off
constexpr form::ControlRow statistics_tip_controls[] = {
    grid::heading("Tipp: Statistikfenster", "L4717", tip_heading),
    {"cmdSkipTips", of_page, Button, "", {4620, 120, 1860, 420}, "&Tipps überspringen", "L4923"},
    grid::purpose("Das Statistikfenster lässt sich frei verschieben.", "L4737"),
    {"imgStatWindow", 0, Image, "", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806"},
    {"imgStatWindow", 1, Image, "", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806", false},
    {"imgStatWindow", 2, Image, "", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806", false},
    {"imgStatWindow", 3, Image, "", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806", false},
    {"imgMouseHand3", -1, Image, "", {600, 1800, 480, 480}, "Mauszeiger", "L4807"},
    {"lblStatdesc", -1, Label, "", {120, 4740, 6360, 660}, "Ziehen Sie das Statistikfenster an die gewünschte Stelle.", "L4876"},
};
// clang-format on

constexpr PagePicture navigation_tip_pictures[] = {{"imgNavBar", 5, "navbar"}, {"imgCursorHand", 0, "hand"}};
constexpr PagePicture splits_tip_pictures[] = {
    {"imgSplitWindow", 3, "splits"}, {"imgSplitBtn", 0, "split_button"}, {"imgcursorHand2", 0, "hand"}};
constexpr PagePicture statistics_tip_pictures[] = {{"imgStatWindow", 4, "stats"}, {"imgMouseHand3", 0, "hand"}};

bool is_tip(const std::string& step) {
  const Page* page = find_page(step);
  return page == &navigation_tip || page == &splits_tip || page == &statistics_tip;
}

/// Goes to the first page behind the tips or, if only tips follow, to the last page. Each page with tips gets this
/// click.
void pass_over_tips(Context&, Pages& pages, int) {
  StepList& steps = pages.steps;
  while (steps.current() < steps.last() && is_tip(steps.name_at(steps.current()))) steps.forward();
}

constexpr PageEvent tip_clicks[] = {{"cmdSkipTips", pass_over_tips}};

/// The place of the hand, or of a button that it presses, while a picture is shown, in twips.
struct Place {
  std::int32_t left, top;
};

void move_to(form::Form& form, std::string_view control, Place place) {
  form::Control& picture = form.at(control);
  form::Bounds bounds = picture.bounds();
  bounds.left = place.left;
  bounds.top = place.top;
  picture.set_bounds(bounds);
}

/// Shows the next picture of the sequence (the first one on the first tick) and returns its number.
int show_next(form::Form& form, std::string_view pictures) {
  const auto members = form.array(pictures);
  form::Control& first = *members.front();
  int shown = -1;
  std::from_chars(first.tag().data(), first.tag().data() + first.tag().size(), shown);
  shown = (shown + 1) % static_cast<int>(members.size());
  for (form::Control* picture : members) picture->set_visible(picture->index() == shown);
  first.set_tag(std::to_string(shown));
  return shown;
}

void walk_navigation_bar(Context& context) {
  static constexpr Place hand[] = {{825, 2070}, {825, 2670}, {825, 3270}, {825, 3870}, {825, 4470}};
  const auto shown = static_cast<std::size_t>(show_next(context.form, "imgNavBar"));
  move_to(context.form, "imgCursorHand", hand[shown]);
}

void split_window(Context& context) {
  static constexpr Place button[] = {{4080, 1620}, {2160, 1620}, {4080, 1620}};
  static constexpr Place hand[] = {{4155, 1830}, {2235, 1830}, {3360, 2880}};
  static constexpr long text[] = {4873, 4874, 4874};
  const auto shown = static_cast<std::size_t>(show_next(context.form, "imgSplitWindow"));
  move_to(context.form, "imgSplitBtn", button[shown]);
  move_to(context.form, "imgcursorHand2", hand[shown]);
  context.show_text(context.form.at("lblSplitDesc"), text[shown]);
}

/// The hand approaches the place where the picture shows the window held, by at most one stride each tick, and never
/// leaves the square of 2500 twips.
void drag_statistics(Context& context) {
  static constexpr Place target[] = {{855, 1800}, {1440, 2100}, {2040, 2400}, {2400, 2460}};
  static constexpr long text[] = {4876, 4876, 4877, 4877};
  static constexpr std::int32_t stride = 900, limit = 2500;
  const auto shown = static_cast<std::size_t>(show_next(context.form, "imgStatWindow"));
  const form::Bounds from = context.form.at("imgMouseHand3").bounds();
  const auto nearer = [](std::int32_t now, std::int32_t wanted) {
    return std::min(now + std::clamp(wanted - now, -stride, stride), limit);
  };
  move_to(context.form, "imgMouseHand3", {nearer(from.left, target[shown].left), nearer(from.top, target[shown].top)});
  context.show_text(context.form.at("lblStatdesc"), text[shown]);
}

}  // namespace

constinit const Page navigation_tip{.tag = "tip_navbar",
                                    .shown_in = Edition::Both,
                                    .controls = navigation_tip_controls,
                                    .pictures = navigation_tip_pictures,
                                    .clicks = tip_clicks,
                                    .animation = {1000, walk_navigation_bar}};
constinit const Page splits_tip{.tag = "tip_splits",
                                .shown_in = Edition::Both,
                                .controls = splits_tip_controls,
                                .pictures = splits_tip_pictures,
                                .clicks = tip_clicks,
                                .animation = {2000, split_window}};
constinit const Page statistics_tip{.tag = "tip_stats",
                                    .shown_in = Edition::Both,
                                    .controls = statistics_tip_controls,
                                    .pictures = statistics_tip_pictures,
                                    .clicks = tip_clicks,
                                    .animation = {2000, drag_statistics}};

}  // namespace wizard
