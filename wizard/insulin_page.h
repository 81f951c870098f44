// Page "Insulin": the insulin of each slot.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/default_medication.h"
#include "database/patient.h"
#include "database/therapy_plan.h"
#include "wizard/context.h"

namespace wizard {

class InsulinPage {
 public:
  explicit InsulinPage(Context& context) : context_(context) {}

  /// Offers each insulin in the slots that fit its kind. Called once, before show().
  void offer(const std::vector<database::PreferredInsulin>& insulins);
  /// Presets slots 0 to 3 with the patient's usual insulins and slot 4 with the pump insulin of the newest plan. The
  /// texts that mean "some insulin of this kind" name no insulin of the patient's; such a slot stays empty.
  void show(const database::DefaultInsulin& usual, const database::TherapyPlan& newest);

  /// True if the slot still shows what show() put there.
  bool is_untouched(std::int16_t slot) const;

  /// The insulin text of each slot: empty if it was left empty, nothing if the therapy does not offer the slot.
  std::array<std::optional<std::string>, 5> insulins() const;

 private:
  std::optional<std::string> insulin_in(std::int16_t slot) const;

  Context& context_;
  std::array<std::string, 5> shown_;               ///< what show() put into the slots
  std::array<std::vector<std::string>, 5> known_;  ///< insulin texts by slot, the patient's own first
};

}  // namespace wizard
