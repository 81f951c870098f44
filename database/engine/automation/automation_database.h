// One open database, by automation. The engine begins and ends transactions on a workspace, so each database has a
// workspace of its own: its transactions are its own as well.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "database/engine/automation/automation_table.h"
#include "database/engine/automation/object.h"
#include "database/engine/engine.h"

namespace engine::automation {

/// Opens a database file of the same password in the same workspace.
using OpenFile = std::function<Object(const Object& workspace, std::string_view path, bool read_only)>;

class AutomationDatabase : public Database {
 public:
  /// `connect` is what the file can be opened with. `exclusive_open` opens other files as this one was opened; it is
  /// empty where this one was not opened exclusively.
  AutomationDatabase(Object engine, Object workspace, Object database, std::string_view path, std::string_view connect,
                     OpenFile exclusive_open)
      : engine_(std::move(engine)),
        workspace_(std::move(workspace)),
        database_(std::move(database)),
        path_(path),
        connect_(connect),
        exclusive_open_(std::move(exclusive_open)) {}
  ~AutomationDatabase() override;
  AutomationDatabase(const AutomationDatabase&) = delete;
  AutomationDatabase& operator=(const AutomationDatabase&) = delete;

  std::string name() const override { return open().text(L"Name"); }
  void close() override;
  void new_password(std::string_view old_password, std::string_view new_password) override;
  std::shared_ptr<TableDef> create_table_def(std::string_view name) override;
  TableDefs& table_defs() override;
  std::unique_ptr<Recordset> open_recordset(std::string_view source) override;
  void execute(std::string_view sql) override;
  std::int32_t records_affected() const override { return affected_; }
  void begin_transaction() override;
  void commit_transaction() override;
  void rollback_transaction() override;
  /// Raises 3251 unless the database was opened exclusively. The database is closed while it is copied, and stays
  /// closed where it cannot be opened again. Its objects must not be used any more.
  void save_copy(std::string_view path) override;

 private:
  /// Returns the database. Raises 3420 once it is closed.
  const Object& open() const;
  /// Calls `run` with the statement. If the engine takes names in it for words of its language, calls `run` once more
  /// with brackets around them. The error is that of the statement as it was given.
  template <typename Run>
  auto with_statement(std::string_view sql, Run run) const;
  void run_statement(std::string_view sql);
  /// Raises 3034 without a transaction.
  void require_transaction() const;
  /// Copies the closed file; on failure no copy is left.
  void copy_closed_file(std::string_view path) const;

  // The destructor releases these from the last to the first.
  Object engine_;
  Object workspace_;
  Object database_;
  AutomationTableDefs tables_{database_};
  std::string path_;
  std::string connect_;
  OpenFile exclusive_open_;
  std::int32_t affected_ = 0;
  bool in_transaction_ = false;
};

}  // namespace engine::automation
