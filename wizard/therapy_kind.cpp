#include "wizard/therapy_kind.h"

#include <algorithm>

namespace wizard {

namespace {

struct TherapyKind {
  std::int32_t number;
  unsigned hidden_slots;  ///< bit n: insulin slot n
  bool insulin_page;
};

constexpr unsigned pump_slot = 0b10000;

constexpr TherapyKind kinds[] = {
    {1, pump_slot, true},   // conventional insulin therapy
    {2, pump_slot, true},   // intensified insulin therapy
    {3, ~pump_slot, true},  // pump
    {4, pump_slot, true},   // insulin and tablets
    {5, 0, false},          // without insulin
};
constexpr TherapyKind any_other{0, 0, true};

}  // namespace

void show_therapy_kind(Context& context, StepList& steps) {
  const auto match = std::ranges::find(kinds, context.form.at("cbTherapie").selected_item_data(), &TherapyKind::number);
  const TherapyKind& kind = match == std::end(kinds) ? any_other : *match;
  if (!kind.insulin_page) steps.offer("Insulin", false);
  for (std::string_view array : {"lblInsulin", "cbInsulin"})
    for (form::Control* control : context.form.array(array))
      control->set_visible((kind.hidden_slots >> control->index() & 1U) == 0);
}

void choose_therapy_kind(Context& context, StepList& steps) {
  steps.offer("Insulin", true);
  steps.offer("Medikamente", true);
  show_therapy_kind(context, steps);
}

}  // namespace wizard
