// A whole database copied to another file, under the same password or another.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/embedded/session.h"

namespace engine::embedded {

/// See Database::save_copy. The copy is the file byte for byte, under the same key.
void save_copy(Session& session, const std::string& host_path);

/// Fills the new, empty file with what is committed in `source`, whose password is `password`, and gives it another
/// one. Raises 3343 where the copy does not hold together. The file is closed and synced afterwards.
void copy_with_password(Connection& source, const std::string& host_path, std::string_view password,
                        std::string_view new_password);

/// Fills the new, empty file with what is committed in `source`, whose password is `password`: its tables one behind
/// the other, their counters set back to what the rows hold. Same key. Raises and leaves as above.
void copy_compacted(Connection& source, const std::string& host_path, std::string_view password);

}  // namespace engine::embedded
