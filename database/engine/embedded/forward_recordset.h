// A recordset that is read once, from the first row to the last. It forgets a row when the next one is asked for. Only
// where rows change meanwhile does it read the remaining ones into memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/recordset_source.h"
#include "database/engine/embedded/row_reader.h"
#include "database/engine/embedded/session.h"
#include "database/engine/engine.h"

namespace engine::embedded {

class ForwardRecordset : public Recordset {
 public:
  ForwardRecordset(std::shared_ptr<Session> session, RecordsetSource source);

  bool bof() const override;
  bool eof() const override;
  std::int32_t record_count() const override;
  bool updatable() const override { return false; }
  void move_first() override;
  void move_last() override;
  void move_next() override;
  void move_previous() override;
  void add_new() override;
  void edit() override;
  void update() override;
  void cancel_update() override;
  void delete_row() override;
  void close() override;

  std::int32_t field_count() const override;
  std::string field_name(std::int32_t position) const override;
  DataType field_type(std::int32_t position) const override;
  Value value(std::int32_t position) const override;
  Value value(std::string_view field) const override;
  void set_value(std::string_view field, const Value& value) override;

 private:
  void require_open() const;
  const jet_sql::ResultColumn& column_at(std::int32_t position) const;

  std::shared_ptr<Session> session_;
  std::vector<jet_sql::ResultColumn> columns_;
  std::unique_ptr<RowReader> reader_;  ///< null once the recordset is closed
  std::size_t row_ = 0;                ///< position among the rows in memory
  std::int32_t visited_ = 0;
  bool has_row_ = false;
};

}  // namespace engine::embedded
