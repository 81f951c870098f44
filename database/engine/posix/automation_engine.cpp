#include "database/engine/engine_choice.h"

namespace engine {

std::unique_ptr<Engine> open_automation_engine(std::string_view identifier) {
  throw support::RuntimeError(429, std::string(identifier) + " is an automation object, which only Windows has.");
}

}  // namespace engine
