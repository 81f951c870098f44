// The version record of a database (`db_info`).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "database/environment.h"

namespace database {

/// The layout that this program creates, and to which it brings older ones.
inline constexpr std::int16_t current_major_version = 4;
inline constexpr std::int16_t current_minor_version = 60;

/// The members have the names of the columns.
struct VersionRecord {
  std::int16_t MajVersion = current_major_version;
  std::int16_t MinVersion = current_minor_version;
  std::int16_t Type = 0;
  std::string Desc;      ///< holds the product word
  std::string Password;  ///< the password when the database was created
  std::optional<engine::Date> LastBackup, LastChanged, Created;
  std::string LastUser;
  std::optional<engine::Date> LastArchive, LastCompressed;
  std::int32_t lAvailableData = 0;  ///< kinds of data in the database, one bit for each
  std::string sAvailableData;       ///< the same as text
};

/// The record of a database that is created now.
VersionRecord new_version_record(const Environment& environment);

/// Reads the record. What cannot be read, and what an older layout does not have, stays as it was. Returns true only
/// without an error and if the description holds the product word. A version that is missing (3265), Null (94) or no
/// number (13) is an error: such a database must not be taken for a current one.
bool db_ReadDBInfo(const Environment& environment, const Target& target, VersionRecord& record);

/// Writes the row, or adds it where there is none. A value that the layout does not take is passed over as a step of
/// the procedure. Returns false where no row was written; the error is then pending.
bool write_version_record(support::Procedure& procedure, engine::Database& database, const VersionRecord& record);

}  // namespace database
