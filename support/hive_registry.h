// A registry kept as a text file of the form "REGEDIT4", so that what a run wrote can be read, compared, and imported
// on Windows. The file is CP1252 with the roots HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE; sections of other roots,
// values of other types and comments are kept as they stand.
#pragma once

#include <memory>
#include <string_view>

#include "support/registry.h"

namespace support {

/// Opens the hive file at a host path. A missing file is an empty hive, created by the first write. Every write that
/// changes something replaces the file in one step, over what the file holds by then; a write that cannot is false and
/// leaves file and registry as they were. Keys have no class; a text with a line break is refused too.
/// Raises 321, naming file and line, where the file is damaged, and 75 where it cannot be read or is larger than 4 MiB;
/// such a file is never written.
std::unique_ptr<Registry> open_hive(std::string_view host_path);

}  // namespace support
