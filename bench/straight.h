// SQLite's C interface as one would use it by hand, for the side that ours is compared with: with the same file format,
// cipher and key.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace bench {

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using StraightDatabase = std::unique_ptr<sqlite3, CloseDatabase>;

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StraightStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Throws std::runtime_error with SQLite's message unless `result` is SQLITE_OK, SQLITE_ROW or SQLITE_DONE.
void check(sqlite3* database, int result);

/// `key` has the form that sqlite3_key takes: a password, or x'…' with key and salt.
StraightDatabase open_straight(const std::string& path, std::string_view key);
StraightStatement prepare(sqlite3* database, std::string_view sql);
void execute(sqlite3* database, const std::string& sql);

/// The derived key of an existing file as x'…', so that it is not derived at each opening.
std::string derived_key(const std::string& path, std::string_view password);

}  // namespace bench
