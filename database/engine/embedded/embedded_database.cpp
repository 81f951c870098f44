#include "database/engine/embedded/embedded_database.h"

#include "database/engine/embedded/embedded_recordset.h"
#include "database/engine/embedded/file_check.h"
#include "database/engine/embedded/file_copy.h"
#include "database/engine/embedded/forward_recordset.h"
#include "database/engine/embedded/program_runner.h"
#include "database/engine/embedded/session_scope.h"
#include "support/file_system.h"

namespace engine::embedded {

std::shared_ptr<TableDef> EmbeddedDatabase::create_table_def(std::string_view name) {
  session_->require_open();
  return std::make_shared<TableObject>(name);
}

TableDefs& EmbeddedDatabase::table_defs() {
  session_->require_open();
  return tables_;
}

std::unique_ptr<Recordset> EmbeddedDatabase::open_recordset(std::string_view source) {
  const ReadScope scope{*session_};
  return std::make_unique<EmbeddedRecordset>(session_, recordset_source(*session_, source));
}

std::unique_ptr<Recordset> EmbeddedDatabase::open_forward_only(std::string_view source) {
  const ReadScope scope{*session_};
  return std::make_unique<ForwardRecordset>(session_, recordset_source(*session_, source));
}

void EmbeddedDatabase::execute(std::string_view sql) {
  affected_ = 0;
  const WaitingScope waiting{*session_};
  session_->compile(sql);
  AtomicChange change{*session_};
  // The statement is compiled a second time where another handle has changed the layout in between.
  const ProgramPointer program = session_->compile(sql);
  const std::int32_t affected = run_program(*session_, *program);
  change.done();
  affected_ = affected;
}

bool EmbeddedDatabase::check(const std::function<void(const FileFault&)>& tell,
                             const std::function<void(std::int64_t done, std::int64_t all)>& look) {
  const ReadScope scope{*session_};
  return check_file(session_->connection(), session_->catalogue_at_hand(), tell, look);
}

void EmbeddedDatabase::compact(const std::function<void(Database& written)>& verify) {
  session_->compact([&](const std::string& host_path) {
    EmbeddedDatabase written{
        support::host_file_system().windows_path(host_path),
        Session::open(host_path, session_->password(),
                      {.read_only = true, .held = true, .busy_time = session_->options().busy_time})};
    verify(written);
  });
}

void EmbeddedDatabase::save_copy(std::string_view path) {
  embedded::save_copy(*session_, support::host_file_system().host_path(path));
}

}  // namespace engine::embedded
