// A Jet file as a database of ours, for procedures that read another database beside their own.
#pragma once

#include <memory>
#include <string_view>

#include "database/environment.h"

namespace jet_import {

/// Copies the file into the folder for temporary files, without password; fields that cannot be held are left out. The
/// file is opened without password first, then with that of the environment's patients. Raises what open_source and
/// import_database raise.
std::unique_ptr<database::ReadableCopy> readable_copy(const database::Environment& environment, std::string_view path);

}  // namespace jet_import
