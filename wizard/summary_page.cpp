#include "wizard/summary_page.h"

#include <algorithm>
#include <utility>

#include "support/error.h"
#include "wizard/choices.h"
#include "wizard/finding.h"
#include "wizard/finish_report.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"

namespace wizard {

namespace {

constexpr long please_check = 4857, something_changed = 4858, not_stored = 4863;

std::string heading_of(const Context& context, const Page& page) {
  const form::Control* heading = context.form.find("lblHeading", page_index(page));
  return heading ? heading->caption() : std::string();
}

/// The lines of a page. If there are several, they stand below its heading.
std::string group_text(const Context& context, const Page& page, const Choices& choices) {
  if (page.patients_own && context.config.ProEdition)
    return context.config.text(not_stored, {heading_of(context, page)});
  const std::vector<std::string> lines = page.summary(context, choices);
  if (lines.size() == 1) return lines.front();
  std::string text = heading_of(context, page) + ":";
  for (const std::string& line : lines) text += "\r\n    " + line;
  return text;
}

std::string findings_text(const Context& context, const Findings& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    const Page* page = finding.page.empty() ? nullptr : find_page(finding.page);
    text += "\r\n  - " + (page ? heading_of(context, *page) + ": " : "") + marked_text(context.config, finding);
  }
  return text;
}

}  // namespace

std::string named_list(const Context& context, const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    list += (list.empty() ? "" : ", ") + name;
  }
  return list.empty() ? context.config.text(nothing_chosen) : list;
}

std::vector<std::string> option_line(const Context& context, const Choices& choices, long number,
                                     std::string_view controls) {
  const form::Control& option = context.form.at(controls, choices.option(controls));
  return {context.config.text(number, {form::plain_caption(option.caption())})};
}

void SummaryPage::look(const Pages& pages) {
  choices_ = gather_choices(context_, pages);
  findings_ = all_findings(context_, pages, choices_);
}

void SummaryPage::show(const Pages& pages) {
  shown_again_ = false;
  look(pages);
  show_text(pages, false);
  offer_pages(pages);
}

bool SummaryPage::still_holds(const Pages& pages) {
  const Findings before = std::exchange(findings_, {});
  look(pages);
  const bool news = std::ranges::any_of(
      findings_, [&](const Finding& finding) { return std::ranges::find(before, finding) == before.end(); });
  if (!news || shown_again_) return true;
  shown_again_ = true;
  show_text(pages, true);
  context_.form.request_focus(context_.form.at("lblSummary"));
  return false;
}

void SummaryPage::show_outcome(const FinishReport& report) {
  support::Procedure procedure{"wizard!Outcome"};
  form::Form& form = context_.form;
  const int page = page_index(summary_page);
  constexpr long heading = 4924, purpose = 4925, close = 6042;
  procedure.step([&] { context_.show_text(form.at("lblHeading", page), heading); });
  procedure.step(
      [&] { form.at("lblPurpose", page).set_caption(context_.config.text(purpose, {context_.config.Productname})); });
  procedure.step([&] { form.at("lblSummary").set_text(written_text(context_.config, report)); });
  for (const std::string_view gone : {"lblChange", "cbChange", "cmdChange"})
    procedure.step([&] { form.at(gone).set_visible(false); });
  for (const int button : {1, 2}) procedure.step([&] { form.at("Command1", button).set_visible(false); });
  procedure.step([&] {
    context_.show_text(form.at("Command1", 0), close);
    form.request_focus(form.at("Command1", 0));
  });
}

/// What the user should check comes first, because the rest may have to be scrolled.
void SummaryPage::show_text(const Pages& pages, bool changed) {
  support::Procedure procedure{"wizard!Summary"};
  std::string text;
  if (changed) text = context_.config.text(something_changed) + "\r\n\r\n";
  if (!findings_.empty()) text += context_.config.text(please_check) + findings_text(context_, findings_) + "\r\n\r\n";
  for (const Page* page : all_pages()) {
    if (!page->summary || !pages.steps.offers(page->tag)) continue;
    procedure.step([&] { text += group_text(context_, *page, choices_) + "\r\n"; });
  }
  while (text.ends_with("\r\n")) text.resize(text.size() - 2);
  context_.form.at("lblSummary").set_text(text);
}

/// Offers the pages that have lines here; the first one with a warning is suggested.
void SummaryPage::offer_pages(const Pages& pages) {
  std::vector<form::ListItem> items;
  int suggested = -1;
  for (const Page* page : all_pages()) {
    const int position = pages.steps.find(page->tag);
    if (!page->summary || !pages.steps.offers(page->tag) || position >= pages.steps.last()) continue;
    const bool warned = std::ranges::any_of(findings_, [&](const Finding& finding) {
      return finding.page == page->tag && finding.severity == Severity::Warning;
    });
    if (warned && suggested < 0) suggested = static_cast<int>(items.size());
    items.push_back({heading_of(context_, *page), position});
  }
  form::Control& list = context_.form.at("cbChange");
  const bool any = !items.empty();
  list.set_items(std::move(items));
  if (any) list.set_list_index(std::max(suggested, 0));
  list.set_enabled(any);
  context_.form.at("cmdChange").set_enabled(any);
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
    {"lblSummary", -1, TextBox, "", {120, 1440, 6360, 3420}},
    {"lblChange", -1, Label, "", {120, 5070, 1020, 330}, "S&eite:", "L4910"},
    {"cbChange", -1, ComboBox, "", {1200, 5025, 3900, 330}, "", "way"},
    {"cmdChange", -1, Button, "", {5220, 4980, 1260, 420}, "Ä&ndern", "L4911"},
};
// clang-format on

constexpr PagePicture summary_pictures[] = {{"imgOpen", 0, "open"}, {"imgNew", 0, "new"}};

void preset_summary(Context& context, Pages&, const Stored&) {
  if (context.config.ProEdition) context.form.at("imgOpen").set_picture(context.form.at("imgNew").picture());
}
void enter_summary(Context&, Pages& pages) {
  pages.returns_to_summary = false;
  pages.summary.show(pages);
}

/// Only the steps move here; the page changes after the event.
void change_page(Context& context, Pages& pages, int) {
  const form::Control& list = context.form.at("cbChange");
  if (list.list_index() < 0) return;
  pages.steps.go_to(list.selected_item_data());
  pages.returns_to_summary = true;
}

constexpr PageEvent summary_clicks[] = {{"cmdChange", change_page}};

}  // namespace

constinit const Page summary_page{.tag = "Fertig",
                                  .shown_in = Edition::Both,
                                  .controls = summary_controls,
                                  .pictures = summary_pictures,
                                  .clicks = summary_clicks,
                                  .preset = preset_summary,
                                  .enter = enter_summary};

}  // namespace wizard
