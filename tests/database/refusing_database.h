// A database whose changes a test can refuse. The hook gets each new table's name, and each statement before it runs;
// it refuses by throwing.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "database/engine/engine.h"

namespace database::testing {

class RefusingDatabase : public engine::Database {
 public:
  using Hook = std::function<void(std::string_view)>;
  RefusingDatabase(std::unique_ptr<engine::Database> real, Hook hook)
      : real_(std::move(real)), hook_(std::move(hook)) {}
  std::shared_ptr<engine::TableDef> create_table_def(std::string_view name) override {
    hook_(name);
    return real_->create_table_def(name);
  }
  void execute(std::string_view sql) override {
    hook_(sql);
    real_->execute(sql);
  }
  std::string name() const override { return real_->name(); }
  void close() override { real_->close(); }
  void new_password(std::string_view before, std::string_view after) override { real_->new_password(before, after); }
  engine::TableDefs& table_defs() override { return real_->table_defs(); }
  std::unique_ptr<engine::Recordset> open_recordset(std::string_view source) override {
    return real_->open_recordset(source);
  }
  std::int32_t records_affected() const override { return real_->records_affected(); }
  void begin_transaction() override { real_->begin_transaction(); }
  void commit_transaction() override { real_->commit_transaction(); }
  void rollback_transaction() override { real_->rollback_transaction(); }
  void save_copy(std::string_view path) override { real_->save_copy(path); }

 private:
  std::unique_ptr<engine::Database> real_;
  Hook hook_;
};

}  // namespace database::testing
