#include "database/engine/automation/automation_database.h"

#include <algorithm>
#include <iterator>

#include "database/engine/automation/automation_engine.h"
#include "database/engine/automation/automation_recordset.h"
#include "database/engine/automation/bracketed_words.h"
#include "database/engine/engine_error.h"
#include "support/abandoned_files.h"
#include "support/file_system.h"

namespace engine::automation {

using support::Variant;

namespace {

// Without this option, the engine silently passes over the rows that a statement cannot change.
constexpr std::int32_t fail_on_error = 128;
// With this option, a commit returns only when the file has been written.
constexpr std::int32_t force_write = 1;

/// The errors of an engine that cannot read a statement, or takes a name in it for something else.
constexpr error_number::Number unreadable_statement[] = {
    error_number::too_few_parameters, error_number::expression_syntax, error_number::unknown_table,
    error_number::no_statement,       error_number::delete_syntax,     error_number::from_syntax,
    error_number::insert_syntax,      error_number::order_by_syntax,   error_number::select_syntax,
    error_number::update_syntax};

/// Returns the statement with the password of this database added to the file that it reads. Empty where the statement
/// names no file, or where the password cannot stand there.
std::string with_password(std::string_view sql, std::string_view connect) {
  constexpr std::string_view mark = " IN '";
  const std::size_t place = sql.rfind(mark);
  if (place == std::string_view::npos || !sql.ends_with('\'') || connect.find(']') != std::string_view::npos) return {};
  std::string path(sql.substr(place + mark.size(), sql.size() - place - mark.size() - 1));
  for (std::size_t quote = 0; (quote = path.find("''", quote)) != std::string::npos;) path.erase(quote++, 1);
  if (path.find(']') != std::string::npos || path.find(';') != std::string::npos) return {};
  return std::string(sql.substr(0, place)) + " IN '' [" + std::string(connect) + ";DATABASE=" + path + "]";
}

/// Closes one object. Whatever happens, closing goes on with the next one.
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
  if (!database_) raise(error_number::object_invalid);
  return database_;
}

void AutomationDatabase::new_password(std::string_view old_password, std::string_view new_password) {
  open().call(L"NewPassword", Variant::of_text(old_password), Variant::of_text(new_password));
  connect_ = new_password.empty() ? std::string() : "MS Access;pwd=" + std::string(new_password);
}

std::shared_ptr<TableDef> AutomationDatabase::create_table_def(std::string_view name) {
  return std::make_shared<AutomationTableDef>(open().object(Kind::TableDef, L"CreateTableDef", Variant::of_text(name)),
                                              false);
}

TableDefs& AutomationDatabase::table_defs() {
  open();
  return tables_;
}

template <typename Run>
auto AutomationDatabase::with_statement(std::string_view sql, Run run) const {
  try {
    return run(Variant::of_text(sql));
  } catch (const support::RuntimeError& error) {
    if (std::ranges::find(unreadable_statement, error.number()) == std::end(unreadable_statement)) throw;
    const std::string bracketed = with_bracketed_words(sql);
    if (bracketed == sql) throw;
    try {
      return run(Variant::of_text(bracketed));
    } catch (const support::RuntimeError&) {
      throw support::RuntimeError(error);
    }
  }
}

std::unique_ptr<Recordset> AutomationDatabase::open_recordset(std::string_view source) {
  const Object& database = open();
  return with_statement(source, [&database](const Variant& statement) {
    return std::make_unique<AutomationRecordset>(database.object(Kind::Recordset, L"OpenRecordset", statement));
  });
}

void AutomationDatabase::run_statement(std::string_view sql) {
  with_statement(sql, [this](const Variant& statement) {
    return database_.call(L"Execute", statement, Variant::of_long(fail_on_error));
  });
}

void AutomationDatabase::execute(std::string_view sql) {
  affected_ = 0;
  open();
  try {
    run_statement(sql);
  } catch (const support::RuntimeError& error) {
    const std::string other =
        error.number() == error_number::wrong_password ? with_password(sql, connect_) : std::string();
    if (other.empty()) throw;
    try {
      run_statement(other);
    } catch (const support::RuntimeError&) {
      throw support::RuntimeError(error);
    }
  }
  tables_.forget();
  affected_ = database_.number(L"RecordsAffected");
}

void AutomationDatabase::begin_transaction() {
  open();
  // The engine would nest a second transaction in the first.
  if (in_transaction_) raise(error_number::invalid_operation);
  workspace_.call(L"BeginTrans");
  in_transaction_ = true;
}

void AutomationDatabase::require_transaction() const {
  open();
  if (!in_transaction_) raise(error_number::no_transaction);
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
  support::FileSystem& files = support::host_file_system();
  if (files.file_size(path)) raise(error_number::database_exists);
  const std::string working = support::working_path(path, support::new_database_mark);
  copy_database_file(path_, working);
  try {
    exclusive_open_(workspace_, working, true).call(L"Close");
  } catch (const support::RuntimeError&) {
    files.remove(working);
    raise(error_number::unknown_format, "the copy cannot be opened");
  }
  if (files.rename_without_replacing(working, path)) return;
  files.remove(working);
  raise(files.file_size(path) ? error_number::database_exists : error_number::disk_error);
}

void AutomationDatabase::save_copy(std::string_view path) {
  open();
  if (in_transaction_) raise(error_number::not_in_transaction);
  if (!exclusive_open_) raise(error_number::not_supported, "copying a database that was not opened exclusively");
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
