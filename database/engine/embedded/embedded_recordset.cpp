#include "database/engine/embedded/embedded_recordset.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/field_value.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "database/engine/embedded/session_scope.h"
#include "database/engine/embedded/sqlite_text.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

std::vector<DataType> types_of(const std::vector<jet_sql::ResultColumn>& columns) {
  std::vector<DataType> types;
  types.reserve(columns.size());
  for (const jet_sql::ResultColumn& column : columns) types.push_back(column.type);
  return types;
}

std::vector<std::optional<std::size_t>> bind_columns(const std::vector<jet_sql::ResultColumn>& columns,
                                                     const TablePointer& table) {
  std::vector<std::optional<std::size_t>> fields(columns.size());
  for (std::size_t i = 0; table && i < columns.size(); ++i) {
    if (columns[i].base_field.empty()) continue;
    const FieldDefinition* field = table->definition.find_field(columns[i].base_field);
    if (field) fields[i] = static_cast<std::size_t>(field - table->definition.fields.data());
  }
  return fields;
}

/// Where the AutoNumber stands among the fields.
std::optional<std::size_t> auto_number_field(const TableDefinition& table) {
  const FieldDefinition* field = table.auto_number();
  if (!field) return std::nullopt;
  return static_cast<std::size_t>(field - table.fields.data());
}

}  // namespace

EmbeddedRecordset::EmbeddedRecordset(std::shared_ptr<Session> session, RecordsetSource source)
    : session_(session),
      columns_(std::move(source.columns)),
      table_fields_(bind_columns(columns_, source.table)),
      table_(source.table),
      reader_(std::move(session), source.sqlite_sql, types_of(columns_), source.table != nullptr),
      count_(source.count) {
  if (reader_.reach(0)) go_to(0);
}

void EmbeddedRecordset::require_open() const {
  if (!open_) raise(3420);
  session_->require_open();
}

void EmbeddedRecordset::require_row() const {
  if (place_ != Place::Row) raise(3021);
  if (reader_.rows().deleted(row_)) raise(3167);
}

bool EmbeddedRecordset::bof() const {
  require_open();
  return place_ == Place::BeforeFirst;
}

bool EmbeddedRecordset::eof() const {
  require_open();
  return place_ == Place::AfterLast || (place_ == Place::BeforeFirst && reader_.rows().size() == deleted_);
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
  for (std::size_t row = 0; reader_.reach(row); ++row) {
    if (!reader_.rows().deleted(row)) return go_to(row);
  }
  raise(3021);
}

void EmbeddedRecordset::move_last() {
  require_open();
  reader_.read_to_end();
  visited_ = reader_.rows().size();
  for (std::size_t row = visited_; row > 0; --row) {
    if (!reader_.rows().deleted(row - 1)) return go_to(row - 1);
  }
  raise(3021);
}

void EmbeddedRecordset::move_next() {
  require_open();
  if (eof()) raise(3021);
  std::size_t row = place_ == Place::Row ? row_ + 1 : 0;
  for (; reader_.reach(row); ++row) {
    if (!reader_.rows().deleted(row)) return go_to(row);
  }
  editing_ = Editing::None;
  visited_ = reader_.rows().size();
  place_ = Place::AfterLast;
}

void EmbeddedRecordset::move_previous() {
  require_open();
  if (place_ == Place::BeforeFirst) raise(3021);
  for (std::size_t row = place_ == Place::Row ? row_ : reader_.rows().size(); row > 0; --row) {
    if (!reader_.rows().deleted(row - 1)) return go_to(row - 1);
  }
  editing_ = Editing::None;
  place_ = Place::BeforeFirst;
}

void EmbeddedRecordset::begin_edit(Editing editing) {
  editing_ = Editing::None;
  if (!table_) raise(3027);
  session_->prepare_change();
  edited_.assign(table_->definition.fields.size(), std::nullopt);
  editing_ = editing;
}

void EmbeddedRecordset::add_new() {
  require_open();
  begin_edit(Editing::Adding);
  try {
    fill_defaults();
  } catch (...) {
    editing_ = Editing::None;
    throw;
  }
}

void EmbeddedRecordset::fill_defaults() {
  const auto& fields = table_->definition.fields;
  const PooledStatement defaults = session_->connection().statement(session_->statements_of(table_).defaults);
  defaults->step();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    edited_[i] = column_value(*defaults, static_cast<int>(i), fields[i].type);
  }
  if (const auto number = auto_number_field(table_->definition)) edited_[*number] = session_->next_number(*table_);
}

void EmbeddedRecordset::edit() {
  require_open();
  require_row();
  begin_edit(Editing::Changing);
}

void EmbeddedRecordset::cancel_update() {
  require_open();
  if (editing_ == Editing::None) raise(3020);
  editing_ = Editing::None;
}

void EmbeddedRecordset::check_nulls() const {
  const TableDefinition& table = table_->definition;
  const auto becomes_null = [&](std::size_t field) { return edited_[field] && is_null(*edited_[field]); };
  for (std::size_t i = 0; i < table.fields.size(); ++i) {
    if (table.fields[i].required && becomes_null(i)) raise(3314, table.fields[i].name);
  }
  for (const IndexDefinition& index : table.indexes) {
    if (!index.forbids_null()) continue;
    for (const std::string& name : index.fields) {
      const FieldDefinition* field = table.find_field(name);
      if (field && becomes_null(static_cast<std::size_t>(field - table.fields.data()))) raise(3058);
    }
  }
}

void EmbeddedRecordset::append_edited(std::int64_t row_id) {
  std::vector<Value> values;
  values.reserve(static_cast<std::size_t>(field_count()));
  for (std::int32_t i = 0; i < field_count(); ++i) values.push_back(value(i));
  reader_.rows().append(row_id, values);
}

std::int64_t EmbeddedRecordset::insert_row() {
  if (const auto number = auto_number_field(table_->definition)) {
    edited_[*number] = session_->confirm_number(*table_, std::get<std::int32_t>(*edited_[*number]));
  }
  const PooledStatement insert = session_->connection().statement(session_->statements_of(table_).insert);
  int parameter = 0;
  for (const std::optional<Value>& content : edited_) insert->bind(++parameter, *content);
  insert->run();
  return session_->connection().last_row_id();
}

std::string EmbeddedRecordset::where_row() const {
  return " WHERE " + std::string(table_->definition.row_id_column()) + "=?";
}

void EmbeddedRecordset::update_row() {
  std::string assignments;
  std::vector<const Value*> values;
  for (std::size_t i = 0; i < edited_.size(); ++i) {
    if (!edited_[i]) continue;
    assignments += (assignments.empty() ? "" : ",") + quoted_name(table_->definition.fields[i].name) + "=?";
    values.push_back(&*edited_[i]);
  }
  if (values.empty()) return;
  Connection& connection = session_->connection();
  const PooledStatement change =
      connection.statement("UPDATE " + quoted_name(table_->definition.name) + " SET " + assignments + where_row());
  int parameter = 0;
  for (const Value* content : values) change->bind(++parameter, *content);
  change->bind(++parameter, reader_.rows().row_id(row_));
  change->run();
  if (connection.changes() == 0) raise(3167);
}

/// Of the fields that were written, and the table's. The row is stored already: an error takes it back.
void EmbeddedRecordset::check_rules(std::int64_t row_id) {
  const std::vector<std::string>& rules = session_->statements_of(table_).rules;
  std::string checks;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    const bool written = i >= edited_.size() || edited_[i].has_value();
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
  if (editing_ == Editing::None) raise(3020);
  check_nulls();
  const bool adding = editing_ == Editing::Adding;
  AtomicChange change{*session_};
  const std::int64_t row_id = adding ? insert_row() : reader_.rows().row_id(row_);
  if (!adding) update_row();
  check_rules(row_id);
  change.done();
  const bool all_visited = visited_ == reader_.rows().size();
  append_edited(row_id);
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
  session_->connection()
      .statement("DELETE FROM " + quoted_name(table_->definition.name) + where_row())
      ->with(reader_.rows().row_id(row_))
      .run();
  if (session_->connection().changes() == 0) raise(3167);
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
  if (position < 0 || static_cast<std::size_t>(position) >= columns_.size()) raise(3265, std::to_string(position));
  return columns_[static_cast<std::size_t>(position)];
}

std::size_t EmbeddedRecordset::column(std::string_view name) const {
  require_open();
  const jet_sql::ResultColumn* found = find_named(columns_, name);
  if (!found) raise(3265, name);
  return static_cast<std::size_t>(found - columns_.data());
}

std::string EmbeddedRecordset::field_name(std::int32_t position) const { return column_at(position).name; }

DataType EmbeddedRecordset::field_type(std::int32_t position) const { return column_at(position).type; }

Value EmbeddedRecordset::value(std::int32_t position) const {
  column_at(position);
  const auto place = static_cast<std::size_t>(position);
  const std::optional<std::size_t> field = table_fields_[place];
  if (editing_ != Editing::None && field && edited_[*field]) return *edited_[*field];
  if (editing_ == Editing::Adding) return Null{};
  require_row();
  return reader_.rows().value(row_, place);
}

Value EmbeddedRecordset::value(std::string_view field) const { return value(static_cast<std::int32_t>(column(field))); }

void EmbeddedRecordset::set_value(std::string_view field, const Value& value) {
  const std::size_t place = column(field);
  if (editing_ == Editing::None) raise(3020);
  const std::optional<std::size_t> table_field = table_fields_[place];
  if (!table_field) raise(3164, field);
  const FieldDefinition& definition = table_->definition.fields[*table_field];
  if (definition.auto_increment()) raise(3164, field);
  edited_[*table_field] = value_for_field(definition, value);
}

}  // namespace engine::embedded
