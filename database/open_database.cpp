#include "database/open_database.h"

#include "database/file_failure.h"
#include "support/error.h"

namespace database {

std::unique_ptr<engine::Engine> create_engine(const Environment& environment, bool newest_engine_only) {
  const auto create = [&](std::string_view identifier) {
    auto engine = environment.open_engine(identifier);
    if (!engine) throw support::RuntimeError(support::error_number::no_such_engine, "no database engine answers");
    return engine;
  };
  try {
    return create("DAO.DBEngine.36");
  } catch (const support::RuntimeError&) {
    if (newest_engine_only) throw;
    return create("DAO.DBEngine.35");
  }
}

std::string connect_text(std::string_view password) {
  return password.empty() ? std::string() : "MS Access;pwd=" + std::string(password);
}

OpenPatient open_patient_database(const Environment& environment, std::string_view path, bool read_only,
                                  bool newest_engine_only) {
  OpenPatient open{create_engine(environment, newest_engine_only), nullptr};
  open.database = open.engine->open_database(path, false, read_only, connect_text(environment.patient_password()));
  return open;
}

void OpenPatientDatabase(const Environment& environment, std::string_view path, bool read_only, bool newest_engine_only,
                         std::unique_ptr<engine::Engine>& engine, std::unique_ptr<engine::Database>& database) {
  support::Procedure procedure{"sql!OpenPatientDatabase"};
  database.reset();
  engine.reset();
  if (path.empty()) return;
  procedure.guarded([&] {
    OpenPatient open = open_patient_database(environment, path, read_only, newest_engine_only);
    engine = std::move(open.engine);
    database = std::move(open.database);
  });
}

void db_cleanup(std::unique_ptr<engine::Engine>& workspace, std::unique_ptr<engine::Database>& database,
                std::unique_ptr<engine::Recordset>& recordset) {
  support::Procedure procedure{"sql!db_cleanup"};
  if (recordset) procedure.step([&] { recordset->close(); });
  recordset.reset();
  if (database) procedure.step([&] { database->close(); });
  database.reset();
  workspace.reset();
}

OpenedTarget::OpenedTarget(const Environment& environment, const Target& target, Access access)
    : database_(target.open()) {
  if (database_) return;
  const support::Outcome opening =
      support::outcome_of([&] { OpenPatientDatabase(environment, target.path(), false, false, engine_, owned_); });
  // A file that cannot be written may still be readable.
  if (access == Access::Read && opening.first(may_still_be_read)) {
    OpenPatientDatabase(environment, target.path(), true, false, engine_, owned_);
  }
  database_ = owned_.get();
}

OpenedTarget::~OpenedTarget() {
  if (!owned_) return;
  std::unique_ptr<engine::Recordset> none;
  db_cleanup(engine_, owned_, none);
}

engine::Database& OpenedTarget::database() const {
  if (!database_) throw support::RuntimeError(support::error_number::no_object, "no database is open");
  return *database_;
}

std::unique_ptr<engine::Recordset> try_open_recordset(support::Procedure& procedure, const OpenedTarget& target,
                                                      std::string_view source) {
  std::unique_ptr<engine::Recordset> rows;
  procedure.step([&] { rows = target.database().open_recordset(source); });
  return rows;
}

std::unique_ptr<engine::Recordset> try_open_row(support::Procedure& procedure, const OpenedTarget& target,
                                                std::string_view source) {
  std::unique_ptr<engine::Recordset> rows;
  procedure.step([&] { rows = target.database().open_forward_only(source); });
  bool found = false;
  if (rows) procedure.step([&] { found = !rows->eof(); });
  if (!found) rows.reset();
  return rows;
}

bool next_row(support::Procedure& procedure, engine::Recordset& rows) {
  bool more = false;
  procedure.step([&] {
    rows.move_next();
    more = !rows.eof();
  });
  return more;
}

}  // namespace database
