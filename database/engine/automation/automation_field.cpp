#include "database/engine/automation/automation_field.h"

namespace engine::automation {

void AutomationFields::append(const std::shared_ptr<Field>& field) {
  const AutomationField& added = ours<AutomationField>(field);
  try {
    fields_.append(added.object());
  } catch (const support::RuntimeError& error) {
    // Engines have two numbers for it.
    if (error.number() == error_number::field_exists) raise(error_number::field_defined_twice, added.name());
    throw;
  }
}

}  // namespace engine::automation
