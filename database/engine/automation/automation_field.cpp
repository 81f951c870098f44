#include "database/engine/automation/automation_field.h"

namespace engine::automation {

void AutomationFields::append(const std::shared_ptr<Field>& field) {
  constexpr int field_exists = 3380, defined_twice = 3191;
  const AutomationField& added = ours<AutomationField>(field);
  try {
    fields_.append(added.object());
  } catch (const support::RuntimeError& error) {
    // Engines have two numbers for it.
    if (error.number() == field_exists) raise(defined_twice, added.name());
    throw;
  }
}

}  // namespace engine::automation
