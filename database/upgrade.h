// The upgrade of databases of an older layout, step by step.
#pragma once

#include "database/version_record.h"

namespace database {

/// True for a record whose layout the ladder brings up to date: major version 4, minor version below 60.
bool needs_upgrade(const VersionRecord& record) noexcept;

/// Brings the layout up to date and raises the record's MinVersion as it goes. The caller holds the transaction and
/// writes the record. Raises 3251 for a layout that it has no steps for.
void upgrade_ladder(const Environment& environment, engine::Database& database, VersionRecord& record);

}  // namespace database
