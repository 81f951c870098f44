#include "database/engine/choice/engine_choice.h"

namespace engine {

std::unique_ptr<Engine> open_automation_engine(std::string_view identifier) {
  throw support::RuntimeError(support::error_number::no_such_engine,
                              std::string(identifier) + " is an automation object, which only Windows has.");
}

std::shared_ptr<void> share_automation_objects() { return nullptr; }

}  // namespace engine
