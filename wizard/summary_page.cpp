#include "wizard/summary_page.h"

#include "support/error.h"
#include "wizard/gather_choices.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/page_rows.h"
#include "wizard/pages.h"

namespace wizard {

namespace {

/// The lines of a page; more than one stand below its heading.
std::string group_text(const Context& context, const Page& page, const Choices& choices) {
  const std::vector<std::string> lines = page.summary(context, choices);
  if (lines.size() == 1) return lines.front();
  std::string text = context.form.at("lblHeading", page_index(page)).caption() + ":";
  for (const std::string& line : lines) text += "\r\n    " + line;
  return text;
}

}  // namespace

void show_summary(Context& context, const Pages& pages) {
  support::Procedure procedure{"wizard!Summary"};
  const Choices choices = gather_choices(context, pages);
  std::string summary;
  for (const Page* page : all_pages()) {
    if (!page->summary || !pages.steps.offers(page->tag)) continue;
    procedure.step([&] { summary += (summary.empty() ? "" : "\r\n") + group_text(context, *page, choices); });
  }
  context.form.at("lblSummary").set_text(summary);
}

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow summary_controls[] = {
    grid::heading("Fertig", "L4718", {120, 120, 5820, 480}),
    {"imgOpen", -1, Image, "", {6000, 120, 480, 480}, "Illustration", "L4808"},
    {"imgNew", -1, Image, "", {6000, 120, 480, 480}, "Illustration", "L4808", false},
    grid::purpose("Diese Einstellungen werden jetzt gespeichert:", "L4738"),
    {"lblSummary", -1, TextBox, "", {120, 1440, 6360, 3900}},
};
// clang-format on

constexpr PagePicture summary_pictures[] = {{"imgOpen", 0, "open"}, {"imgNew", 0, "new"}};

void preset_summary(Context& context, Pages&, const Stored&) {
  if (context.config.ProEdition) context.form.at("imgOpen").set_picture(context.form.at("imgNew").picture());
}
void enter_summary(Context& context, Pages& pages) { show_summary(context, pages); }

}  // namespace

constinit const Page summary_page{.tag = "Fertig",
                                  .shown_in = Edition::Both,
                                  .controls = summary_controls,
                                  .pictures = summary_pictures,
                                  .preset = preset_summary,
                                  .enter = enter_summary};

}  // namespace wizard
