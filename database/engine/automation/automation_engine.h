// The engine that is installed on the machine as automation objects: the object model over IDispatch. Members are
// called by name.
#pragma once

#include <memory>
#include <string_view>

#include "database/engine/engine.h"

namespace engine::automation {

/// Copies the file while nobody writes to it. On failure no target is left. Raises 3045 where the source is in use,
/// 3204 where the target exists, 3044 where the target's folder does not exist, 3051 where rights are missing, 3043
/// where reading or writing fails.
void copy_database_file(std::string_view source, std::string_view target);

/// Creates the object of exactly this identifier. Raises 429 where it is not registered or cannot be created in this
/// process: a 64-bit program cannot create a 32-bit object.
std::unique_ptr<Engine> create_automation_engine(std::string_view identifier);

/// As long as the result lives, create_automation_engine makes one object of each identifier and shares it.
std::shared_ptr<void> share_objects();

}  // namespace engine::automation
