#include "wizard/insulin_page.h"

#include <algorithm>

#include "support/encoding.h"
#include "support/text.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/presets.h"
#include "wizard/summary_page.h"

namespace wizard {

namespace {

using database::PreferredInsulin;

bool acts_as_bolus(const PreferredInsulin& insulin) { return insulin.bolusie > 0 && insulin.basalie <= 0; }

bool fits_bolus(const PreferredInsulin& insulin) { return acts_as_bolus(insulin) && !insulin.rapid; }
bool fits_basal(const PreferredInsulin& insulin) { return insulin.bolusie <= 0 && insulin.basalie > 0; }
bool fits_mixed(const PreferredInsulin& insulin) { return insulin.bolusie > 0 && insulin.basalie > 0; }
bool fits_rapid(const PreferredInsulin& insulin) { return acts_as_bolus(insulin) && insulin.rapid; }

/// By slot.
constexpr bool (*fits[])(const PreferredInsulin&) = {fits_bolus, fits_basal, fits_mixed, fits_rapid, acts_as_bolus};

struct UsualInsulin {
  std::string database::DefaultInsulin::*text;
  long kind_text;           ///< the text for this kind of insulin if no insulin is known
  std::string_view suffix;  ///< behind that text
};

/// By slot; the pump slot has none.
constexpr UsualInsulin usual_insulins[] = {
    {&database::DefaultInsulin::bolus, 4353, ""},
    {&database::DefaultInsulin::basal, 4354, ""},
    {&database::DefaultInsulin::mix, 4356, " 50/50"},
    {&database::DefaultInsulin::rapid, 4355, ""},
};

bool names_kind_only(const Context& context, const UsualInsulin& usual, std::string_view text) {
  std::string kind = context.config.text(usual.kind_text);
  support::replace(kind, ":", "");
  return text == support::trim(kind + std::string(usual.suffix));
}

std::string pump_insulin(const database::TherapyPlan& plan) {
  const auto item = std::ranges::find(plan.items, database::plan_item::pump, &database::PlanItem::ItemType);
  return item == plan.items.end() ? std::string() : item->desc;
}

}  // namespace

void InsulinPage::offer(const std::vector<PreferredInsulin>& insulins) {
  for (std::size_t slot = 0; slot < known_.size(); ++slot) {
    std::vector<form::ListItem> items;
    for (const PreferredInsulin& insulin : insulins) {
      if (!fits[slot](insulin) || insulin.desc.empty()) continue;
      known_[slot].push_back(
          database::insulin_text(insulin.desc, insulin.bolusie, insulin.basalie, insulin.rapid ? -1 : 0));
      items.push_back({insulin.desc, static_cast<std::int32_t>(items.size())});
    }
    context_.form.at("cbInsulin", static_cast<int>(slot)).set_items(std::move(items));
  }
}

void InsulinPage::show(const database::DefaultInsulin& usual, const database::TherapyPlan& newest) {
  for (std::size_t slot = 0; slot < known_.size(); ++slot) {
    std::string text = pump_insulin(newest);
    if (slot < std::size(usual_insulins)) {
      text = usual.*usual_insulins[slot].text;
      if (names_kind_only(context_, usual_insulins[slot], text)) text.clear();
    }
    if (text.find('|') != std::string::npos) known_[slot].insert(known_[slot].begin(), text);
    shown_[slot] = support::trim(database::insulin_name(text));
    context_.form.at("cbInsulin", static_cast<int>(slot)).set_text(shown_[slot]);
  }
}

bool InsulinPage::is_untouched(std::int16_t slot) const {
  return context_.form.at("cbInsulin", slot).text() == shown_[static_cast<std::size_t>(slot)];
}

std::optional<std::string> InsulinPage::insulin_in(std::int16_t slot) const {
  const form::Control& box = context_.form.at("cbInsulin", slot);
  const std::string name = typed_text(box);
  if (!box.visible()) return std::nullopt;
  if (name.empty()) return name;
  const auto& known = known_[static_cast<std::size_t>(slot)];
  const auto match = std::ranges::find_if(known, [&](const std::string& text) {
    return support::equal_ignoring_case(support::trim(database::insulin_name(text)), name);
  });
  return match == known.end() ? database::insulin_text(name, slot) : *match;
}

std::array<std::optional<std::string>, 5> InsulinPage::insulins() const {
  std::array<std::optional<std::string>, 5> texts;
  for (std::int16_t slot = 0; slot < 5; ++slot) texts[static_cast<std::size_t>(slot)] = insulin_in(slot);
  return texts;
}

namespace {

using enum form::Kind;

/// The names of insulins need two lines, so their fields are further apart.
constexpr std::int32_t insulin_top(int n) { return grid::content_top + n * 720; }
constexpr form::Bounds insulin_label(int n) { return {120, insulin_top(n) + 45, grid::wide_label, 510}; }
constexpr form::Bounds insulin_field(int n) { return {grid::beside_wide_label, insulin_top(n), 2820, 330}; }

// One control, one line.
// clang-format off
constexpr form::ControlRow insulin_controls[] = {
    grid::heading("Ihre Insuline", "L4705"),
    grid::purpose("Wählen Sie Ihre Insuline aus, oder tippen Sie den Namen ein.", "L4725"),
    {"lblInsulin", 0, Label, "", insulin_label(0), "Bolus-Insulin (Normal-Insulin):", "L4766"},
    {"cbInsulin", 0, ComboBox, "", insulin_field(0), "", "", true, true},
    {"lblInsulin", 1, Label, "", insulin_label(1), "Verzögerungs-Insulin (Basal-Insulin):", "L4767"},
    {"cbInsulin", 1, ComboBox, "", insulin_field(1), "", "", true, true},
    {"lblInsulin", 2, Label, "", insulin_label(2), "Misch-Insulin (Basal-Insulin):", "L4768"},
    {"cbInsulin", 2, ComboBox, "", insulin_field(2), "", "", true, true},
    {"lblInsulin", 3, Label, "", insulin_label(3), "Schnell-Insulin (Humalog):", "L4769"},
    {"cbInsulin", 3, ComboBox, "", insulin_field(3), "", "", true, true},
    {"lblInsulin", 4, Label, "", insulin_label(4), "Pumpeninsulin:", "L4770"},
    {"cbInsulin", 4, ComboBox, "", insulin_field(4), "", "", true, true},
    grid::why(),
};
// clang-format on

/// A plan item's text holds 255 characters, and numbers are added to the name.
constexpr TextLimit insulin_limits[] = {{"cbInsulin", 100}};

void preset_insulins(Context&, Pages& pages, const Stored& stored) {
  pages.insulin.offer(stored.insulins);
  pages.insulin.show(stored.usual, stored.newest);
}

void gather_insulins(const Context&, const Pages& pages, Choices& choices) {
  if (pages.steps.offers(insulin_page.tag)) choices.therapy.insulins = pages.insulin.insulins();
}

/// Names in the plan by slot; empty if it has none.
std::vector<std::string> planned_insulins(const Choices& choices) {
  std::vector<std::string> names(5);
  for (const database::PlanItem& item : choices.plan.items)
    if (item.ItemType >= database::plan_item::bolus && item.ItemType <= database::plan_item::pump)
      names[static_cast<std::size_t>(item.ItemType)] = database::insulin_name(item.desc);
  return names;
}

/// Each insulin with its slot, as the page names it.
std::vector<std::string> sum_up_insulins(const Context& context, const Choices& choices) {
  const std::vector<std::string> names = planned_insulins(choices);
  std::vector<std::string> lines;
  for (std::size_t slot = 0; slot < names.size(); ++slot) {
    const form::Control& label = context.form.at("lblInsulin", static_cast<int>(slot));
    if (!names[slot].empty()) lines.push_back(form::plain_caption(label.caption()) + ": " + names[slot]);
  }
  if (lines.empty()) lines.push_back(context.config.text(4839, {context.config.text(nothing_chosen)}));
  return lines;
}

/// Insulins that are in a slot but not in the plan: the therapy does not use them, or the plan cannot hold them as
/// typed.
void find_in_insulins(const Context& context, const Pages& pages, const Choices& choices, Findings& findings) {
  constexpr std::int16_t without_insulin = 5;
  constexpr long not_stored = 4889, stored_as = 4890, stays_in_plan = 4891;
  const std::vector<std::string> planned = planned_insulins(choices);
  const std::string& therapy = context.form.at("cbTherapie").text();
  const bool same_therapy = choices.patient.therapy == choices.stored.patient.therapy;
  for (std::int16_t slot = 0; slot < 5; ++slot) {
    const form::Control& box = context.form.at("cbInsulin", slot);
    const std::string typed = typed_text(box), &stored = planned[static_cast<std::size_t>(slot)];
    const bool offered = choices.therapy.insulins[static_cast<std::size_t>(slot)].has_value();
    if (typed.empty() || support::equal_ignoring_case(typed, support::trim(stored))) continue;
    if (offered)
      findings.push_back({Severity::Note, {}, box.path(), stored_as, {typed, stored}});
    else if (!pages.insulin.is_untouched(slot) || !same_therapy)
      findings.push_back({Severity::Warning, {}, box.path(), not_stored, {typed, therapy}});
  }
  if (choices.patient.therapy == without_insulin &&
      std::ranges::any_of(planned, [](const auto& name) { return !name.empty(); }))
    findings.push_back({Severity::Note, {}, {}, stays_in_plan, {named_list(context, planned), therapy}});
}

}  // namespace

constinit const Page insulin_page{.tag = "Insulin",
                                  .shown_in = Edition::Standard,
                                  .patients_own = true,
                                  .controls = insulin_controls,
                                  .illustration = Illustration::Insulin,
                                  .why = 4933,
                                  .limits = insulin_limits,
                                  .preset = preset_insulins,
                                  .gather = gather_insulins,
                                  .summary = sum_up_insulins,
                                  .findings = find_in_insulins};

}  // namespace wizard
