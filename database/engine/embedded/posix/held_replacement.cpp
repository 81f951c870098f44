#include "database/engine/embedded/held_replacement.h"

#include "support/host_file.h"

namespace engine::embedded {

// Whoever waits to open the old file finds that its name has gone to another one.
void replace_held_file(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target) {
  support::replace_with_host_file(source, target);
  held.reset();
}

}  // namespace engine::embedded
