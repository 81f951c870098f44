// The upgrade of databases of an older layout: a ladder of steps. Each step leads to one minor version.
#pragma once

#include "database/version_record.h"

namespace database {

/// True for a record whose layout the ladder can bring up to date: major version 4, minor version below 60.
bool needs_upgrade(const VersionRecord& record) noexcept;

/// Brings the layout up to date, and raises the record's MinVersion with each step. Does nothing where the record calls
/// for no upgrade. The caller holds the transaction and writes the record.
///
/// Steps that fail because the file's layout is not the usual one are passed over and become part of the outcome.
/// Raises only where going on would lose data: the disk, the memory or the file fails. The environment's progress is
/// told of each step; its message box is asked before a long conversion of pump data.
void upgrade_ladder(const Environment& environment, engine::Database& database, VersionRecord& record);

/// Brings the layout up to date where the record calls for it, raises the record's MinVersion, and writes the record,
/// all in one transaction. Returns 1 when written; else 0, with database and record as they were.
std::int16_t db_WriteDBInfo(const Environment& environment, const Target& target, VersionRecord& record);

}  // namespace database
