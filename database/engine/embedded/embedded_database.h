// One open database of the embedded engine.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "database/engine/embedded/session.h"
#include "database/engine/embedded/table_object.h"
#include "database/engine/engine.h"
#include "database/engine/file_care.h"

namespace engine::embedded {

class EmbeddedDatabase : public Database, private FileCare {
 public:
  EmbeddedDatabase(std::string_view name, std::shared_ptr<Session> session)
      : name_(name), session_(std::move(session)), tables_(session_) {}
  ~EmbeddedDatabase() override { session_->close(); }

  std::string name() const override { return name_; }
  void close() override { session_->close(); }
  void new_password(std::string_view old_password, std::string_view new_password) override {
    session_->change_password(old_password, new_password);
  }
  std::shared_ptr<TableDef> create_table_def(std::string_view name) override;
  TableDefs& table_defs() override;
  std::unique_ptr<Recordset> open_recordset(std::string_view source) override;
  std::unique_ptr<Recordset> open_forward_only(std::string_view source) override;
  void execute(std::string_view sql) override;
  std::int32_t records_affected() const override { return affected_; }
  void begin_transaction() override { session_->begin_transaction(); }
  void commit_transaction() override { session_->commit_transaction(); }
  void rollback_transaction() override { session_->rollback_transaction(); }
  void save_copy(std::string_view path) override;
  FileCare* care() override { return this; }

 private:
  bool check(const std::function<void(const FileFault&)>& tell,
             const std::function<void(std::int64_t done, std::int64_t all)>& look) override;
  void compact(const std::function<void(Database& written)>& verify) override;

  std::string name_;
  std::shared_ptr<Session> session_;
  TableCollection tables_;
  std::int32_t affected_ = 0;
};

}  // namespace engine::embedded
