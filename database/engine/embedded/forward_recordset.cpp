#include "database/engine/embedded/forward_recordset.h"

#include <utility>

#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

std::vector<DataType> column_types(const std::vector<jet_sql::ResultColumn>& columns) {
  std::vector<DataType> types;
  types.reserve(columns.size());
  for (const jet_sql::ResultColumn& column : columns) types.push_back(column.type);
  return types;
}

}  // namespace

ForwardRecordset::ForwardRecordset(std::shared_ptr<Session> session, RecordsetSource source)
    : session_(session),
      columns_(std::move(source.columns)),
      reader_(std::make_unique<RowReader>(std::move(session), source.sqlite_sql, column_types(columns_),
                                          source.table ? source.table->id : 0)),
      has_row_(reader_->reach(0)) {
  visited_ = has_row_ ? 1 : 0;
}

void ForwardRecordset::require_open() const {
  if (!reader_) raise(error_number::object_invalid);
  session_->require_open();
}

bool ForwardRecordset::bof() const {
  require_open();
  return !has_row_ && visited_ == 0;
}

bool ForwardRecordset::eof() const {
  require_open();
  // A row that failed is not the end.
  return !has_row_ && !reader_->reach(row_);
}

std::int32_t ForwardRecordset::record_count() const {
  require_open();
  return visited_;
}

void ForwardRecordset::move_next() {
  require_open();
  if (!has_row_) raise(error_number::no_current_record);
  // The rows that were read ahead come first. Then the rows before the current one are dropped to make room for the
  // next one.
  if (++row_ == reader_->rows().size()) {
    reader_->forget_rows();
    row_ = 0;
  }
  has_row_ = false;
  has_row_ = reader_->reach(row_);
  visited_ += has_row_ ? 1 : 0;
}

void ForwardRecordset::move_first() { raise(error_number::invalid_operation); }
void ForwardRecordset::move_last() { raise(error_number::invalid_operation); }
void ForwardRecordset::move_previous() { raise(error_number::invalid_operation); }
void ForwardRecordset::add_new() { raise(error_number::read_only); }
void ForwardRecordset::edit() { raise(error_number::read_only); }
void ForwardRecordset::update() { raise(error_number::no_edit); }
void ForwardRecordset::cancel_update() { raise(error_number::no_edit); }
void ForwardRecordset::delete_row() { raise(error_number::read_only); }
void ForwardRecordset::set_value(std::string_view, const Value&) { raise(error_number::no_edit); }

void ForwardRecordset::close() { reader_.reset(); }

std::int32_t ForwardRecordset::field_count() const {
  require_open();
  return static_cast<std::int32_t>(columns_.size());
}

const jet_sql::ResultColumn& ForwardRecordset::column_at(std::int32_t position) const {
  require_open();
  if (position < 0 || static_cast<std::size_t>(position) >= columns_.size())
    raise(error_number::item_not_found, std::to_string(position));
  return columns_[static_cast<std::size_t>(position)];
}

std::string ForwardRecordset::field_name(std::int32_t position) const { return column_at(position).name; }

DataType ForwardRecordset::field_type(std::int32_t position) const { return column_at(position).type; }

Value ForwardRecordset::value(std::int32_t position) const {
  column_at(position);
  if (!has_row_) raise(error_number::no_current_record);
  return reader_->rows().value(row_, static_cast<std::size_t>(position));
}

Value ForwardRecordset::value(std::string_view field) const {
  require_open();
  const jet_sql::ResultColumn* found = find_named(columns_, field);
  if (!found) raise(error_number::item_not_found, field);
  return value(static_cast<std::int32_t>(found - columns_.data()));
}

}  // namespace engine::embedded
