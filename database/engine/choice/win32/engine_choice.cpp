#include "database/engine/choice/engine_choice.h"

#include "database/engine/automation/automation_engine.h"

namespace engine {

std::unique_ptr<Engine> open_automation_engine(std::string_view identifier) {
  return automation::create_automation_engine(identifier);
}

std::shared_ptr<void> share_automation_objects() { return automation::share_objects(); }

}  // namespace engine
