// Copies of a whole database in another file, under the same password or another, and files that are written anew.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "database/engine/embedded/session.h"

namespace engine::embedded {

/// See Database::save_copy. The copy equals the file byte for byte, under the same key.
void save_copy(Session& session, const std::string& host_path);

/// Fills a new, empty file with what is committed in `source`, whose password is `password`, and gives it the new
/// password. Raises 3343 where the copy is inconsistent. The file is closed and synced afterwards.
void copy_with_password(Connection& source, const std::string& host_path, std::string_view password,
                        std::string_view new_password);

/// Fills a new, empty file with what is committed in `source`, whose password is `password`. Its tables lie one behind
/// the other, and their counters are set back to what the rows hold. The key stays the same. Raises and leaves the file
/// as above.
void copy_compacted(Connection& source, const std::string& host_path, std::string_view password);

/// Writes what `reader` reads to the new, empty file at `path`, which it closes and syncs.
using FillFile = std::function<void(Connection& reader, const std::string& path)>;

/// Lets `fill` write a new file beside the old one, `host_path`, and puts it in the old one's place. At any moment
/// there is the old file or the new one. `held` has the old file open alone; it is closed afterwards, and may be closed
/// on failure. Raises 3045 where somebody has opened the file meanwhile, 3251 where it has a second name in a folder.
void write_anew(std::unique_ptr<Connection>& held, const std::string& host_path, std::string_view password,
                const ConnectionOptions& options, const FillFile& fill);

}  // namespace engine::embedded
