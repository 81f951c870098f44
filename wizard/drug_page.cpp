// Page "Medikamente": the names of up to three drugs that are taken beside insulin.
#include <algorithm>
#include <array>
#include <string>

#include "support/text.h"
#include "wizard/context.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/presets.h"
#include "wizard/summary_page.h"

namespace wizard {
namespace {

void show_drugs(Context& context, const std::array<std::string, 3>& drugs) {
  for (std::size_t n = 0; n < drugs.size(); ++n)
    context.form.at("txtMedik", static_cast<int>(n)).set_text(support::trim(drugs[n]));
}

/// The fields' texts without outer blanks.
std::array<std::string, 3> gather_drugs(const form::Form& form) {
  std::array<std::string, 3> drugs;
  for (std::size_t n = 0; n < drugs.size(); ++n) drugs[n] = typed_text(form.at("txtMedik", static_cast<int>(n)));
  return drugs;
}

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow drug_controls[] = {
    grid::heading("Ihre Medikamente", "L4706"),
    grid::purpose("Nehmen Sie Tabletten oder andere Medikamente gegen Diabetes?", "L4726"),
    {"lblMedik", 0, Label, "", grid::label(0), "Medikament 1:", "L4771"},
    {"txtMedik", 0, TextBox, "", grid::field(0), "", "", true, true},
    {"lblMedik", 1, Label, "", grid::label(1), "Medikament 2:", "L4772"},
    {"txtMedik", 1, TextBox, "", grid::field(1), "", "", true, true},
    {"lblMedik", 2, Label, "", grid::label(2), "Medikament 3:", "L4773"},
    {"txtMedik", 2, TextBox, "", grid::field(2), "", "", true, true},
};
// clang-format on

constexpr TextLimit drug_limits[] = {{"txtMedik", 100}};

void preset_drugs(Context& context, Pages&, const Stored& stored) { show_drugs(context, stored.drugs); }

void gather_drug_page(const Context& context, const Pages& pages, Choices& choices) {
  if (pages.steps.offers(drug_page.tag)) std::ranges::copy(gather_drugs(context.form), choices.therapy.drugs.begin());
}

std::vector<std::string> sum_up_drugs(const Context& context, const Choices& choices) {
  std::vector<std::string> names(3);
  for (const database::PlanItem& item : choices.plan.items)
    if (item.ItemType >= database::plan_item::drug_first && item.ItemType <= database::plan_item::drug_last)
      names[static_cast<std::size_t>(item.ItemType - database::plan_item::drug_first)] = item.desc;
  return {context.config.text(4840, {named_list(context, names)})};
}

}  // namespace

constinit const Page drug_page{.tag = "Medikamente",
                               .shown_in = Edition::Standard,
                               .patients_own = true,
                               .controls = drug_controls,
                               .illustration = Illustration::Medicines,
                               .limits = drug_limits,
                               .preset = preset_drugs,
                               .gather = gather_drug_page,
                               .summary = sum_up_drugs};

}  // namespace wizard
