// A whole database copied to another file.
#pragma once

#include <string>

#include "database/engine/embedded/session.h"

namespace engine::embedded {

/// See Database::save_copy. The copy has a key of its own, derived from the same password.
void save_copy(Session& session, const std::string& host_path);

}  // namespace engine::embedded
