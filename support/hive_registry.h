// A registry kept as a text file in the form "REGEDIT4". What a run wrote can be read, compared, and imported on
// Windows. The file is in CP1252 and has the roots HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE. Sections of other roots,
// values of other types and comments are kept unchanged.
#pragma once

#include <memory>
#include <string_view>

#include "support/registry.h"

namespace support {

/// Opens the hive file at a host path. A missing file is an empty hive; the first write creates it. Every write that
/// changes something reads the file again, applies the change and replaces the file in one step. A write that fails
/// returns false and leaves file and registry as they were. Keys have no class, and a text with a line break is
/// refused. Raises 321, naming file and line, if the file is damaged, and 75 if it cannot be read or is larger than 4
/// MiB; such a file is never written.
std::unique_ptr<Registry> open_hive(std::string_view host_path);

}  // namespace support
