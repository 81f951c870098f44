// Opens and closes databases.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/environment.h"

namespace database {

/// Creates the newest engine that answers: "DAO.DBEngine.36", else "DAO.DBEngine.35" unless only the newest may be
/// used. Raises the error of the last one that was asked.
std::unique_ptr<engine::Engine> create_engine(const Environment& environment, bool newest_engine_only);

/// The text that tells an engine a database's password; empty for an empty password.
std::string connect_text(std::string_view password);

/// An open patient database with its engine, which outlives it.
struct OpenPatient {
  std::unique_ptr<engine::Engine> engine;
  std::unique_ptr<engine::Database> database;
};

/// Opens a patient database with the environment's password. Raises the error that keeps it from being opened.
OpenPatient open_patient_database(const Environment& environment, std::string_view path, bool read_only,
                                  bool newest_engine_only = false);

/// Does the same, but passes over a failure: engine and database are then null. They are also null for an empty path,
/// which is no failure.
void OpenPatientDatabase(const Environment& environment, std::string_view path, bool read_only, bool newest_engine_only,
                         std::unique_ptr<engine::Engine>& engine, std::unique_ptr<engine::Database>& database);

/// Closes recordset, database and engine in this order, as far as they are given, and makes them null. A failure to
/// close is passed over. (The workspace belongs to the engine.)
void db_cleanup(std::unique_ptr<engine::Engine>& workspace, std::unique_ptr<engine::Database>& database,
                std::unique_ptr<engine::Recordset>& recordset);

/// The target that a procedure works on. A path is opened and closed again; a database that is open already stays open.
class OpenedTarget {
 public:
  enum class Access { Read, Write };

  /// Opens a path; for reading, even a file that cannot be written. A failure is reported as a step that was passed
  /// over, and database() then raises.
  OpenedTarget(const Environment& environment, const Target& target, Access access);
  /// Closes what the constructor opened.
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

/// Returns the recordset, or null where opening it fails; the error is then pending.
std::unique_ptr<engine::Recordset> try_open_recordset(support::Procedure& procedure, const OpenedTarget& target,
                                                      std::string_view source);

/// Opens a recordset that is read forward only, on its first row. Null also where it has no row.
std::unique_ptr<engine::Recordset> try_open_row(support::Procedure& procedure, const OpenedTarget& target,
                                                std::string_view source);

/// Moves to the next row. False after the last one.
bool next_row(support::Procedure& procedure, engine::Recordset& rows);

}  // namespace database
