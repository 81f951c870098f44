// How a database procedure works on its target: a path is opened and closed again, a database that is open stays open.
#pragma once

#include <memory>

#include "database/environment.h"

namespace database {

class OpenedTarget {
 public:
  enum class Access { Read, Write };

  /// Opens a path; for reading, one that may not be written too. A failure is told of as a skipped statement, and
  /// database() raises afterwards.
  OpenedTarget(const Environment& environment, const Target& target, Access access);
  /// Closes what was opened here.
  ~OpenedTarget();
  OpenedTarget(const OpenedTarget&) = delete;
  OpenedTarget& operator=(const OpenedTarget&) = delete;

  /// Null where nothing could be opened.
  engine::Database* get() const noexcept { return database_; }
  /// Raises 91 (object variable not set) where nothing could be opened.
  engine::Database& database() const;

 private:
  std::unique_ptr<engine::Engine> engine_;
  std::unique_ptr<engine::Database> owned_;
  engine::Database* database_ = nullptr;
};

/// The recordset, or null where opening it fails (the error is then pending).
std::unique_ptr<engine::Recordset> try_open_recordset(support::Procedure& procedure, const OpenedTarget& target,
                                                      std::string_view source);

/// The same on its first row, to be read forward only; null also where there is none.
std::unique_ptr<engine::Recordset> try_open_row(support::Procedure& procedure, const OpenedTarget& target,
                                                std::string_view source);

/// Moves on; false after the last row.
bool next_row(support::Procedure& procedure, engine::Recordset& rows);

}  // namespace database
