#include "database/engine/automation/automation_engine.h"

#include "database/engine/engine_choice.h"

namespace engine {

std::unique_ptr<Engine> open_automation_engine(std::string_view identifier) {
  return automation::create_automation_engine(identifier);
}

}  // namespace engine
