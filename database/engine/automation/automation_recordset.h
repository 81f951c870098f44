// Rows of a table or query, by automation. The fields of a recordset follow its current row, so each field is looked up
// once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/automation/object.h"
#include "database/engine/engine.h"

namespace engine::automation {

class AutomationRecordset : public Recordset {
 public:
  explicit AutomationRecordset(Object object) : object_(std::move(object)) {}
  ~AutomationRecordset() override;
  AutomationRecordset(const AutomationRecordset&) = delete;
  AutomationRecordset& operator=(const AutomationRecordset&) = delete;

  bool bof() const override { return open().flag(L"BOF"); }
  bool eof() const override { return open().flag(L"EOF"); }
  std::int32_t record_count() const override { return open().number(L"RecordCount"); }
  bool updatable() const override { return open().flag(L"Updatable"); }
  void move_first() override { open().call(L"MoveFirst"); }
  void move_last() override { open().call(L"MoveLast"); }
  void move_next() override { open().call(L"MoveNext"); }
  void move_previous() override { open().call(L"MovePrevious"); }
  void add_new() override { open().call(L"AddNew"); }
  void edit() override { open().call(L"Edit"); }
  void update() override { open().call(L"Update"); }
  void cancel_update() override { open().call(L"CancelUpdate"); }
  void delete_row() override { open().call(L"Delete"); }
  void close() override;

  std::int32_t field_count() const override { return static_cast<std::int32_t>(columns().size()); }
  std::string field_name(std::int32_t position) const override { return column(position).name; }
  DataType field_type(std::int32_t position) const override { return column(position).type; }
  Value value(std::int32_t position) const override;
  Value value(std::string_view field) const override;
  void set_value(std::string_view field, const Value& value) override;

 private:
  struct Column {
    Object field;
    std::string name;
    DataType type;
    /// The engine pads texts of a fixed size with blanks.
    bool is_padded = false;
    bool takes_empty_text = true;
  };

  /// Returns the recordset. Raises 3420 once it is closed.
  const Object& open() const;
  const std::vector<Column>& columns() const;
  static Column column_of(Object field);
  static Value value_of(const Column& column);
  const Column& column(std::int32_t position) const;
  const Column& column(std::string_view name) const;

  Object object_;
  mutable std::optional<std::vector<Column>> columns_;
};

}  // namespace engine::automation
