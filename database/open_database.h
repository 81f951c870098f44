// Opening databases, and closing them again.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/environment.h"

namespace database {

/// The newest engine that answers: "DAO.DBEngine.36", else "DAO.DBEngine.35" unless only the newest will do. Raises
/// what the last one asked raised.
std::unique_ptr<engine::Engine> create_engine(const Environment& environment, bool newest_engine_only);

/// How an engine is told the password of a database that it opens; empty for an empty password.
std::string connect_text(std::string_view password);

/// A patient database that is open, with its engine, which outlives it.
struct OpenPatient {
  std::unique_ptr<engine::Engine> engine;
  std::unique_ptr<engine::Database> database;
};

/// Opens a patient database with the password of the environment. Raises what keeps it from being opened.
OpenPatient open_patient_database(const Environment& environment, std::string_view path, bool read_only,
                                  bool newest_engine_only = false);

/// The same, passed over where it fails: engine and database are null then, and for an empty path, which is no failure.
void OpenPatientDatabase(const Environment& environment, std::string_view path, bool read_only, bool newest_engine_only,
                         std::unique_ptr<engine::Engine>& engine, std::unique_ptr<engine::Database>& database);

/// Closes, in this order, what is given: recordset, database, engine (the workspace is the engine's own). All are null
/// afterwards; what fails to close is passed over.
void db_cleanup(std::unique_ptr<engine::Engine>& workspace, std::unique_ptr<engine::Database>& database,
                std::unique_ptr<engine::Recordset>& recordset);

/// How a procedure works on its target: it opens and closes a path, and leaves a database open that is open already.
class OpenedTarget {
 public:
  enum class Access { Read, Write };

  /// Opens a path; for reading, one that may not be written too. A failure is told of as a step that was
  /// passed over, and database() raises afterwards.
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
