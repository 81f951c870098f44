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

/// Opens a patient database with the password of the environment. Engine and database are null on failure (the reason
/// through the skipped-statement listener, and in `failure` where given), and for an empty path, which is no failure.
void OpenPatientDatabase(const Environment& environment, std::string_view path, bool read_only, bool newest_engine_only,
                         std::unique_ptr<engine::Engine>& engine, std::unique_ptr<engine::Database>& database,
                         support::RuntimeError* failure = nullptr);

/// Closes, in this order, what is given: recordset, database, engine (the workspace is the engine's own). All are null
/// afterwards; what fails to close is passed over.
void db_cleanup(std::unique_ptr<engine::Engine>& workspace, std::unique_ptr<engine::Database>& database,
                std::unique_ptr<engine::Recordset>& recordset);

}  // namespace database
