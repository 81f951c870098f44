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

}  // namespace database
