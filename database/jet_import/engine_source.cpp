#include "database/jet_import/engine_source.h"

#include <cmath>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"

namespace jet_import {
namespace {

bool is_held_by_ours(engine::DataType type) { return engine::embedded::find_field_type(type) != nullptr; }

/// A type that only the automation objects have. Its values arrive as Double.
constexpr auto money = static_cast<engine::DataType>(5);

SourceField field_of(const engine::Field& field) {
  SourceField found;
  found.name = field.name();
  found.type = field.type() == money ? engine::DataType::Double : field.type();
  found.size = found.type == engine::DataType::Text ? field.size() : 0;
  found.attributes = field.attributes();
  found.ordinal_position = field.ordinal_position();
  found.default_value = field.default_value();
  found.required = field.required();
  found.allow_zero_length = field.allow_zero_length();
  found.validation_rule = field.validation_rule();
  found.validation_text = field.validation_text();
  return found;
}

SourceIndex index_of(engine::Index& index) {
  SourceIndex found{index.name(),     {}, index.primary(), index.unique(), index.required(), index.ignore_nulls(),
                    index.clustered()};
  for (std::int32_t i = 0; i < index.fields().count(); ++i) found.fields.push_back(index.fields().item(i)->name());
  return found;
}

SourceTable table_of(engine::TableDef& table) {
  SourceTable found;
  found.name = table.name();
  found.validation_rule = table.validation_rule();
  found.validation_text = table.validation_text();
  for (std::int32_t i = 0; i < table.fields().count(); ++i) {
    const auto field = table.fields().item(i);
    if (is_held_by_ours(field->type()) || field->type() == money) {
      found.fields.push_back(field_of(*field));
    } else {
      found.foreign_fields.push_back(field->name());
    }
  }
  for (std::int32_t i = 0; i < table.indexes().count(); ++i) {
    found.indexes.push_back(index_of(*table.indexes().item(i)));
  }
  return found;
}

/// Names the fields: a query over them leaves the foreign ones out and reads forwards.
std::string query_of(const SourceTable& table) {
  std::string sql = "SELECT ";
  for (const SourceField& field : table.fields) {
    sql += (&field == table.fields.data() ? "[" : ", [") + field.name + "]";
  }
  return sql + " FROM [" + table.name + "]";
}

/// Money has four decimals, but a Double holds only 15 digits.
void check_money(double amount) {
  constexpr double first_rounded = 1e11;
  if (std::abs(amount) >= first_rounded)
    throw support::RuntimeError(support::error_number::overflow, "Overflow: " + engine::to_text(amount));
}

class EngineRows : public SourceRows {
 public:
  explicit EngineRows(std::unique_ptr<engine::Recordset> rows) : rows_(std::move(rows)) {}
  bool next() override {
    if (std::exchange(started_, true)) rows_->move_next();
    return !rows_->eof();
  }
  engine::Value value(std::size_t field) override {
    const auto position = static_cast<std::int32_t>(field);
    engine::Value found = rows_->value(position);
    if (rows_->field_type(position) == money && !engine::is_null(found)) check_money(engine::to_double(found));
    return found;
  }

 private:
  std::unique_ptr<engine::Recordset> rows_;
  bool started_ = false;
};

class EngineSource : public Source {
 public:
  EngineSource(std::unique_ptr<engine::Engine> engine, std::unique_ptr<engine::Database> database)
      : engine_(std::move(engine)), database_(std::move(database)) {
    engine::TableDefs& tables = database_->table_defs();
    for (std::int32_t i = 0; i < tables.count(); ++i) add(*tables.item(i));
  }

  const std::vector<SourceTable>& tables() const override { return tables_; }
  const std::vector<std::string>& linked_tables() const override { return linked_tables_; }
  std::unique_ptr<SourceRows> rows(std::size_t table) override {
    return std::make_unique<EngineRows>(database_->open_forward_only(query_of(tables_[table])));
  }

 private:
  void add(engine::TableDef& table) {
    if (!table.connect().empty()) {
      linked_tables_.push_back(table.name());
      return;
    }
    tables_.push_back(table_of(table));
    const auto counted = database_->open_recordset("SELECT count(*) FROM [" + table.name() + "]");
    tables_.back().row_count = static_cast<std::int64_t>(engine::to_double(counted->value(0)));
  }

  std::unique_ptr<engine::Engine> engine_;
  std::unique_ptr<engine::Database> database_;
  std::vector<SourceTable> tables_;
  std::vector<std::string> linked_tables_;
};

}  // namespace

std::unique_ptr<Source> engine_source(std::unique_ptr<engine::Engine> engine,
                                      std::unique_ptr<engine::Database> database) {
  return std::make_unique<EngineSource>(std::move(engine), std::move(database));
}

}  // namespace jet_import
