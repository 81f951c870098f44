// Another file in the place of a database that is open.
#pragma once

#include <memory>
#include <string>

#include "database/engine/embedded/connection.h"

namespace engine::embedded {

/// Puts `source`, a closed database, in the place of `target`, which `held` has open alone and locked. `held` is closed
/// afterwards, and may be on failure. Raises as support::replace_with_host_file() does, and 3045 where somebody has
/// opened the file meanwhile, as can be on a system that gives the name of a file only when it is closed.
void replace_held_file(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target);

}  // namespace engine::embedded
