#include "database/engine/automation/automation_database.h"

#include "database/engine/automation/automation_recordset.h"
#include "database/engine/automation/file_copy.h"
#include "database/engine/engine_error.h"
#include "support/file_system.h"

namespace engine::automation {

using support::Variant;

namespace {

// Without it, the engine passes over the rows that a statement cannot change, and tells nobody.
constexpr std::int32_t fail_on_error = 128;
// A commit returns when the file has been written, not some time before.
constexpr std::int32_t force_write = 1;

/// Closing goes on with the next object whatever happens to one.
template <typename Call>
void attempt(Call&& call) noexcept {
  try {
    std::forward<Call>(call)();
  } catch (const support::RuntimeError&) {
    // Nothing more can be done for an object that does not close.
  }
}

}  // namespace

AutomationDatabase::~AutomationDatabase() { close(); }

void AutomationDatabase::close() {
  if (!database_) return;
  if (in_transaction_) attempt([this] { workspace_.call(L"Rollback"); });
  in_transaction_ = false;
  attempt([this] { database_.call(L"Close"); });
  attempt([this] { workspace_.call(L"Close"); });
  tables_.forget();
  database_.reset();
  workspace_.reset();
  engine_.reset();
}

const Object& AutomationDatabase::open() const {
  if (!database_) raise(3420);
  return database_;
}

void AutomationDatabase::new_password(std::string_view old_password, std::string_view new_password) {
  open().call(L"NewPassword", Variant::of_text(old_password), Variant::of_text(new_password));
}

std::shared_ptr<TableDef> AutomationDatabase::create_table_def(std::string_view name) {
  return std::make_shared<AutomationTableDef>(open().object(Kind::TableDef, L"CreateTableDef", Variant::of_text(name)),
                                              false);
}

TableDefs& AutomationDatabase::table_defs() {
  open();
  return tables_;
}

std::unique_ptr<Recordset> AutomationDatabase::open_recordset(std::string_view source) {
  return std::make_unique<AutomationRecordset>(
      open().object(Kind::Recordset, L"OpenRecordset", Variant::of_text(source)));
}

void AutomationDatabase::execute(std::string_view sql) {
  affected_ = 0;
  open().call(L"Execute", Variant::of_text(sql), Variant::of_long(fail_on_error));
  tables_.forget();
  affected_ = database_.number(L"RecordsAffected");
}

void AutomationDatabase::begin_transaction() {
  open();
  // The engine would nest them.
  if (in_transaction_) raise(3219);
  workspace_.call(L"BeginTrans");
  in_transaction_ = true;
}

void AutomationDatabase::require_transaction() const {
  open();
  if (!in_transaction_) raise(3034);
}

void AutomationDatabase::commit_transaction() {
  require_transaction();
  workspace_.call(L"CommitTrans", Variant::of_long(force_write));
  in_transaction_ = false;
}

void AutomationDatabase::rollback_transaction() {
  require_transaction();
  in_transaction_ = false;
  workspace_.call(L"Rollback");
  tables_.forget();
}

void AutomationDatabase::copy_closed_file(std::string_view path) const {
  copy_database_file(path_, path);
  try {
    exclusive_open_(workspace_, path, true).call(L"Close");
  } catch (const support::RuntimeError&) {
    support::host_file_system().remove(path);
    raise(3343, "the copy cannot be opened");
  }
}

void AutomationDatabase::save_copy(std::string_view path) {
  open();
  if (in_transaction_) raise(3246);
  if (!exclusive_open_) raise(3251, "copying a database that was not opened exclusively");
  tables_.forget();
  database_.call(L"Close");
  database_.reset();
  std::optional<support::RuntimeError> failure;
  try {
    copy_closed_file(path);
  } catch (const support::RuntimeError& error) {
    failure = error;
  }
  database_ = exclusive_open_(workspace_, path_, false);
  if (failure) throw support::RuntimeError(*failure);
}

}  // namespace engine::automation
