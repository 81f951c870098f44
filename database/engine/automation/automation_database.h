// One open database, by automation. It has a workspace of its own, which is what the engine begins and ends
// transactions on: those of one database are not those of another.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "database/engine/automation/automation_table.h"
#include "database/engine/automation/object.h"
#include "database/engine/engine.h"

namespace engine::automation {

class AutomationDatabase : public Database {
 public:
  AutomationDatabase(Object engine, Object workspace, Object database)
      : engine_(std::move(engine)), workspace_(std::move(workspace)), database_(std::move(database)) {}
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

 private:
  /// The database; 3420 once it is closed.
  const Object& open() const;
  /// 3034 without a transaction.
  void require_transaction() const;

  // Released in the reverse order.
  Object engine_;
  Object workspace_;
  Object database_;
  AutomationTableDefs tables_{database_};
  std::int32_t affected_ = 0;
  bool in_transaction_ = false;
};

}  // namespace engine::automation
