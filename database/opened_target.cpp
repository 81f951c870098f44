#include "database/opened_target.h"

#include "database/file_failure.h"
#include "database/open_database.h"

namespace database {

OpenedTarget::OpenedTarget(const Environment& environment, const Target& target, Access access)
    : database_(target.open()) {
  if (database_) return;
  const support::Outcome opening =
      support::outcome_of([&] { OpenPatientDatabase(environment, target.path(), false, false, engine_, owned_); });
  // A file that may not be written can still be read.
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
