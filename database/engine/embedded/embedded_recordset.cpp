#include "database/engine/embedded/embedded_recordset.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/field_value.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "database/engine/embedded/session_scope.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

std::vector<DataType> types_of(const std::vector<jet_sql::ResultColumn>& columns) {
  std::vector<DataType> types;
  types.reserve(columns.size());
  for (const jet_sql::ResultColumn& column : columns) types.push_back(column.type);
  return types;
}

std::vector<std::int64_t> fields_of(const std::vector<jet_sql::ResultColumn>& columns, const TablePointer& table) {
  std::vector<std::int64_t> fields(columns.size());
  for (std::size_t i = 0; table && i < columns.size(); ++i) {
    if (columns[i].base_field.empty()) continue;
    if (const FieldDefinition* field = table->definition.find_field(columns[i].base_field)) fields[i] = field->id;
  }
  return fields;
}

}  // namespace

EmbeddedRecordset::EmbeddedRecordset(std::shared_ptr<Session> session, RecordsetSource source)
    : session_(session),
      columns_(std::move(source.columns)),
      table_(source.table),
      column_fields_(fields_of(columns_, table_)),
      row_sql_(std::move(source.row_sql)),
      reader_(std::move(session), source.sqlite_sql, types_of(columns_), table_ ? table_->id : 0),
      count_(source.count) {
  bind_columns();
  if (reader_.reach(0)) go_to(0);
}

/// A field that was renamed no longer belongs to the column, and neither does another field that took its name.
void EmbeddedRecordset::bind_columns() {
  table_fields_.assign(columns_.size(), std::nullopt);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (column_fields_[i] == 0) continue;
    const FieldDefinition* field = table_->definition.find_field(columns_[i].base_field);
    if (!field || field->id != column_fields_[i]) continue;
    table_fields_[i] = static_cast<std::size_t>(field - table_->definition.fields.data());
  }
}

void EmbeddedRecordset::require_open() const {
  if (!open_) raise(error_number::object_invalid);
  table_ ? session_->require_table(table_->id, known_) : session_->require_open();
}

void EmbeddedRecordset::close() {
  open_ = false;
  reader_.close();
}

void EmbeddedRecordset::require_row() const {
  if (place_ != Place::Row) raise(error_number::no_current_record);
  if (reader_.rows().deleted(row_)) raise(error_number::record_deleted);
}

/// True where a row remains that was not deleted, or where rows may still come.
bool EmbeddedRecordset::has_rows() const { return !reader_.at_end() || reader_.rows().size() > deleted_; }

bool EmbeddedRecordset::bof() const {
  require_open();
  return place_ == Place::BeforeFirst || (place_ == Place::AfterLast && !has_rows());
}

bool EmbeddedRecordset::eof() const {
  require_open();
  return place_ == Place::AfterLast || (place_ == Place::BeforeFirst && !has_rows());
}

std::int32_t EmbeddedRecordset::record_count() const {
  require_open();
  return count_ ? *count_ : static_cast<std::int32_t>(visited_ - deleted_);
}

bool EmbeddedRecordset::updatable() const {
  require_open();
  return table_ != nullptr;
}

void EmbeddedRecordset::go_to(std::size_t row) {
  editing_ = Editing::None;
  place_ = Place::Row;
  row_ = row;
  visited_ = std::max(visited_, row + 1);
}

void EmbeddedRecordset::move_first() {
  require_open();
  editing_ = Editing::None;
  for (std::size_t row = 0; reader_.reach(row); ++row) {
    if (!reader_.rows().deleted(row)) return go_to(row);
  }
  place_ = Place::BeforeFirst;
  raise(error_number::no_current_record);
}

void EmbeddedRecordset::move_last() {
  require_open();
  editing_ = Editing::None;
  reader_.read_to_end();
  visited_ = reader_.rows().size();
  for (std::size_t row = visited_; row > 0; --row) {
    if (!reader_.rows().deleted(row - 1)) return go_to(row - 1);
  }
  place_ = Place::BeforeFirst;
  raise(error_number::no_current_record);
}

void EmbeddedRecordset::move_next() {
  editing_ = Editing::None;
  if (eof()) raise(error_number::no_current_record);
  std::size_t row = place_ == Place::Row ? row_ + 1 : 0;
  for (; reader_.reach(row); ++row) {
    if (!reader_.rows().deleted(row)) return go_to(row);
  }
  visited_ = reader_.rows().size();
  place_ = Place::AfterLast;
}

void EmbeddedRecordset::move_previous() {
  editing_ = Editing::None;
  if (bof()) raise(error_number::no_current_record);
  for (std::size_t row = place_ == Place::Row ? row_ : reader_.rows().size(); row > 0; --row) {
    if (!reader_.rows().deleted(row - 1)) return go_to(row - 1);
  }
  place_ = Place::BeforeFirst;
}

void EmbeddedRecordset::begin_edit(Editing editing) {
  editing_ = Editing::None;
  if (!table_) raise(error_number::read_only);
  session_->prepare_change();
  adopt_layout();
  edited_.clear();
  assigned_.clear();
  editing_ = editing;
}

bool EmbeddedRecordset::adopt_layout() {
  TablePointer now = session_->table(table_->id);
  if (now == table_) return false;
  table_ = std::move(now);
  bind_columns();
  if (editing_ == Editing::Adding) fill_defaults();
  return true;
}

void EmbeddedRecordset::add_new() {
  editing_ = Editing::None;
  require_open();
  begin_edit(Editing::Adding);
  try {
    fill_defaults();
  } catch (...) {
    editing_ = Editing::None;
    throw;
  }
}

/// From here on the AutoNumber belongs to this row: whoever adds the next row, even through another handle, gets
/// another number.
void EmbeddedRecordset::fill_defaults() {
  const auto& fields = table_->definition.fields;
  const PooledStatement defaults = session_->connection().statement(session_->statements_of(table_).defaults);
  defaults->step();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (edited_.contains(fields[i].id)) continue;
    edited_[fields[i].id] = fields[i].auto_increment() ? Value{session_->take_number(table_)}
                                                       : column_value(*defaults, static_cast<int>(i), fields[i].type);
  }
}

void EmbeddedRecordset::edit() {
  require_open();
  require_row();
  begin_edit(Editing::Changing);
}

void EmbeddedRecordset::cancel_update() {
  require_open();
  if (editing_ == Editing::None) raise(error_number::no_edit);
  editing_ = Editing::None;
}

void EmbeddedRecordset::check_edited() {
  const auto& fields = table_->definition.fields;
  for (const std::size_t column : assigned_) {
    if (!table_fields_[column]) raise(error_number::item_not_found, columns_[column].name);
    Value& value = edited_.at(column_fields_[column]);
    value = value_for_field(fields[*table_fields_[column]], value);
  }
  check_nulls();
}

void EmbeddedRecordset::check_nulls() const {
  const TableDefinition& table = table_->definition;
  const auto becomes_null = [&](const FieldDefinition& field) {
    const auto edited = edited_.find(field.id);
    return edited != edited_.end() && is_null(edited->second);
  };
  for (const FieldDefinition& field : table.fields) {
    if (field.required && becomes_null(field)) raise(error_number::field_required, field.name);
  }
  for (const IndexDefinition& index : table.indexes) {
    if (!index.forbids_null()) continue;
    for (const std::string& name : index.fields) {
      const FieldDefinition* field = table.find_field(name);
      if (field && becomes_null(*field)) raise(error_number::null_in_key);
    }
  }
}

PooledStatement EmbeddedRecordset::row_statement() const {
  try {
    return session_->connection().statement(row_sql_);
  } catch (const support::RuntimeError&) {
    // A field from which a column is computed has been deleted since the query was opened.
    raise(error_number::item_not_found);
  }
}

std::vector<Value> EmbeddedRecordset::row_after_update(std::int64_t row_id) const {
  std::vector<Value> values;
  values.reserve(columns_.size());
  if (row_sql_.empty()) {
    for (std::size_t i = 0; i < columns_.size(); ++i) values.push_back(value(static_cast<std::int32_t>(i)));
    return values;
  }
  const PooledStatement row = row_statement();
  row->with(row_id).step();
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    values.push_back(column_value(*row, static_cast<int>(i), columns_[i].type));
  }
  return values;
}

std::int64_t EmbeddedRecordset::insert_row() {
  const std::int64_t row_id = session_->counters().next_row(session_->connection(), *table_);
  const PooledStatement insert = session_->connection().statement(session_->statements_of(table_).insert);
  int parameter = 0;
  insert->bind(++parameter, row_id);
  for (const FieldDefinition& field : table_->definition.fields) insert->bind(++parameter, edited_.at(field.id));
  insert->run();
  return row_id;
}

std::string EmbeddedRecordset::where_row() const {
  return " WHERE " + std::string(table_->definition.row_id_column()) + "=?";
}

void EmbeddedRecordset::update_row() {
  std::string assignments;
  std::vector<const Value*> values;
  for (const FieldDefinition& field : table_->definition.fields) {
    const auto edited = edited_.find(field.id);
    if (edited == edited_.end()) continue;
    assignments += (assignments.empty() ? "" : ",") + quoted_name(field.name) + "=?";
    values.push_back(&edited->second);
  }
  // The row must exist even where it gets no new value.
  const std::string row_id{table_->definition.row_id_column()};
  if (values.empty()) assignments = row_id + "=" + row_id;
  Connection& connection = session_->connection();
  const PooledStatement change =
      connection.statement("UPDATE " + quoted_name(table_->definition.name) + " SET " + assignments + where_row());
  int parameter = 0;
  for (const Value* content : values) change->bind(++parameter, *content);
  change->bind(++parameter, reader_.rows().row_id(row_));
  change->run();
  if (connection.changes() == 0) raise(error_number::record_deleted);
}

/// Checks the rules of the fields that were written, and the table's. The row is stored already; an error undoes that.
void EmbeddedRecordset::check_rules(std::int64_t row_id) {
  const std::vector<std::string>& rules = session_->statements_of(table_).rules;
  const auto& fields = table_->definition.fields;
  std::string checks;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    const bool written = i >= fields.size() || edited_.contains(fields[i].id);
    if (written && !rules[i].empty()) checks += (checks.empty() ? "" : " + ") + rules[i];
  }
  if (checks.empty()) return;
  session_->connection()
      .statement("SELECT " + checks + " FROM " + quoted_name(table_->definition.name) + " AS " +
                 std::string(jet_sql::rule_row) + where_row())
      ->with(row_id)
      .step();
}

void EmbeddedRecordset::update() {
  require_open();
  if (editing_ == Editing::None) raise(error_number::no_edit);
  // An error that is known already is raised before anybody waits for the file.
  adopt_layout();
  check_edited();
  const bool adding = editing_ == Editing::Adding;
  AtomicChange change{*session_};
  if (adopt_layout()) check_edited();
  const std::int64_t row_id = adding ? insert_row() : reader_.rows().row_id(row_);
  if (!adding) update_row();
  check_rules(row_id);
  const std::vector<Value> values = row_after_update(row_id);
  change.done();
  const bool all_visited = visited_ == reader_.rows().size();
  reader_.rows().append(row_id, values);
  editing_ = Editing::None;
  if (!adding) {
    reader_.rows().replace_by_last(row_);
    return;
  }
  if (all_visited) visited_ = reader_.rows().size();
  if (count_) ++*count_;
}

void EmbeddedRecordset::delete_row() {
  require_open();
  require_row();
  begin_edit(Editing::None);
  AtomicChange change{*session_};
  adopt_layout();
  session_->connection()
      .statement("DELETE FROM " + quoted_name(table_->definition.name) + where_row())
      ->with(reader_.rows().row_id(row_))
      .run();
  if (session_->connection().changes() == 0) raise(error_number::record_deleted);
  change.done();
  reader_.rows().mark_deleted(row_);
  ++deleted_;
  if (count_) --*count_;
}

std::int32_t EmbeddedRecordset::field_count() const {
  require_open();
  return static_cast<std::int32_t>(columns_.size());
}

const jet_sql::ResultColumn& EmbeddedRecordset::column_at(std::int32_t position) const {
  require_open();
  if (position < 0 || static_cast<std::size_t>(position) >= columns_.size())
    raise(error_number::item_not_found, std::to_string(position));
  return columns_[static_cast<std::size_t>(position)];
}

std::size_t EmbeddedRecordset::column(std::string_view name) const {
  require_open();
  const jet_sql::ResultColumn* found = find_named(columns_, name);
  if (!found) raise(error_number::item_not_found, name);
  return static_cast<std::size_t>(found - columns_.data());
}

std::string EmbeddedRecordset::field_name(std::int32_t position) const { return column_at(position).name; }

DataType EmbeddedRecordset::field_type(std::int32_t position) const { return column_at(position).type; }

Value EmbeddedRecordset::value(std::int32_t position) const {
  column_at(position);
  const auto place = static_cast<std::size_t>(position);
  if (editing_ != Editing::None) {
    const auto edited = edited_.find(column_fields_[place]);
    if (edited != edited_.end()) return edited->second;
    if (editing_ == Editing::Adding) return Null{};
  }
  require_row();
  return reader_.rows().value(row_, place);
}

Value EmbeddedRecordset::value(std::string_view field) const { return value(static_cast<std::int32_t>(column(field))); }

void EmbeddedRecordset::set_value(std::string_view field, const Value& value) {
  const std::size_t place = column(field);
  if (editing_ == Editing::None) raise(error_number::no_edit);
  const std::optional<std::size_t> table_field = table_fields_[place];
  if (!table_field)
    raise(column_fields_[place] == 0 ? error_number::field_not_writable : error_number::item_not_found, field);
  const FieldDefinition& definition = table_->definition.fields[*table_field];
  if (definition.auto_increment()) raise(error_number::field_not_writable, field);
  edited_[definition.id] = value_for_field(definition, value);
  assigned_.insert(place);
}

}  // namespace engine::embedded
