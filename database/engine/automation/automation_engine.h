// The engine that is installed on the machine as automation objects: the object model over IDispatch, by the names of
// the members.
#pragma once

#include <memory>
#include <string_view>

#include "database/engine/engine.h"

namespace engine::automation {

/// Copies the file while nobody writes to it. On failure no target is left: 3045 where the source is in use, 3204 where
/// the target is there, 3044 where its folder is not, 3051 where rights are missing, 3043 where reading or writing
/// fails.
void copy_database_file(std::string_view source, std::string_view target);

/// Creates exactly this identifier's object. Raises 429 where it is not registered or cannot be created in this
/// process, as one of 32 bits cannot in a program of 64.
std::unique_ptr<Engine> create_automation_engine(std::string_view identifier);

/// As long as the result lives, create_automation_engine makes one object of each identifier and shares it.
std::shared_ptr<void> share_objects();

}  // namespace engine::automation
