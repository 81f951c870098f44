#include "database/engine/embedded/embedded_engine.h"

namespace engine {

std::unique_ptr<Engine> open_engine(std::string_view identifier) {
  if (!embedded::answers_to(identifier)) throw support::RuntimeError(429, "There is no engine of this identifier.");
  return embedded::create_embedded_engine();
}

}  // namespace engine
