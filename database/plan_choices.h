// The plan that the wizard makes from what its pages show: data to data, nothing is read or stored here.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "database/therapy_plan.h"

namespace database {

/// What the therapy pages show. Something that no page showed is not given, and a plan that is followed keeps it; an
/// empty text is a field that was left empty.
struct PlanChoices {
  std::array<std::optional<std::string>, 5> insulins;  ///< insulin texts by slot
  std::array<std::optional<std::string>, 3> drugs;
  std::array<std::optional<double>, 8> targets;  ///< items 500 to 507: mg/dl, then mmHg
};

/// A new plan of this day from the choices.
TherapyPlan first_plan(const PlanChoices& choices, engine::Date today);

/// The newest plan carried on with the choices: items that no page shows stay, and so do those of an insulin or drug
/// whose name is the same. A plan dated today keeps its id and is replaced when saved; otherwise it is a new one.
TherapyPlan following_plan(const TherapyPlan& newest, const PlanChoices& choices, engine::Date today);

/// True where both plans hold the same items, in whatever order.
bool same_content(const TherapyPlan& left, const TherapyPlan& right);

}  // namespace database
