#include "database/jet_import/posix/mdb_file.h"

#include <algorithm>
#include <utility>

#include "database/jet_import/posix/mdb_indexes.h"

namespace jet_import {
namespace {

/// What a column's type becomes; money, decimals and replication numbers have no type of their own here.
struct TypeRow {
  int mdb_type;
  engine::DataType type;
  std::int32_t size = 0;
};

constexpr std::int32_t guid_characters = 38;
constexpr TypeRow types[] = {
    {MDB_BOOL, engine::DataType::Boolean},   {MDB_BYTE, engine::DataType::Byte},
    {MDB_INT, engine::DataType::Integer},    {MDB_LONGINT, engine::DataType::Long},
    {MDB_FLOAT, engine::DataType::Single},   {MDB_DOUBLE, engine::DataType::Double},
    {MDB_DATETIME, engine::DataType::Date},  {MDB_TEXT, engine::DataType::Text},
    {MDB_MEMO, engine::DataType::Memo},      {MDB_MONEY, engine::DataType::Double},
    {MDB_NUMERIC, engine::DataType::Double}, {MDB_REPID, engine::DataType::Text, guid_characters},
};

const TypeRow* find_type(int mdb_type) {
  const auto* row = std::ranges::find(types, mdb_type, &TypeRow::mdb_type);
  return row == std::end(types) ? nullptr : row;
}

template <typename Item>
std::span<Item*> items(const GPtrArray* array) {
  if (!array) return {};
  return {reinterpret_cast<Item**>(array->pdata), array->len};
}

std::string text_or_nothing(const char* value) { return value ? value : ""; }

std::string property(const MdbColumn& column, const char* name) {
  return text_or_nothing(mdb_col_get_prop(&column, name));
}

SourceField describe(const MdbColumn& column, const TypeRow& row, JetVersion version) {
  SourceField field;
  field.name = column.name;
  field.type = row.type;
  field.size = row.size;
  if (column.col_type == MDB_TEXT) field.size = version == JetVersion::Jet3 ? column.col_size : column.col_size / 2;
  field.attributes =
      engine::is_text(row.type) && !column.is_fixed ? engine::attribute_variable : engine::attribute_fixed;
  if (column.is_long_auto) field.attributes |= engine::attribute_auto_increment;
  field.ordinal_position = static_cast<std::int16_t>(column.col_num);
  field.default_value = property(column, "DefaultValue");
  field.required = property(column, "Required") == "yes";
  field.allow_zero_length = property(column, "AllowZeroLength") == "yes";
  field.validation_rule = property(column, "ValidationRule");
  field.validation_text = property(column, "ValidationText");
  return field;
}

}  // namespace

std::span<MdbCatalogEntry*> catalogue_entries(MdbHandle& file) { return items<MdbCatalogEntry>(file.catalog); }

std::vector<MdbCatalogEntry*> user_tables(MdbHandle& file) {
  std::vector<MdbCatalogEntry*> tables;
  std::ranges::copy_if(items<MdbCatalogEntry>(file.catalog), std::back_inserter(tables),
                       [](MdbCatalogEntry* entry) { return mdb_is_user_table(entry) != 0; });
  return tables;
}

std::vector<std::string> linked_tables(MdbHandle& file) {
  std::vector<std::string> names;
  for (const MdbCatalogEntry* entry : items<MdbCatalogEntry>(file.catalog)) {
    if (entry->object_type == MDB_LINKED_TABLE) names.emplace_back(entry->object_name);
  }
  return names;
}

MdbTablePointer read_table(MdbCatalogEntry& entry) {
  MdbTablePointer table(mdb_read_table(&entry));
  if (!table || !mdb_read_columns(table.get())) {
    throw support::RuntimeError(support::error_number::unknown_format,
                                std::string(entry.object_name) + ": the table's definition cannot be read");
  }
  return table;
}

std::vector<const MdbColumn*> held_columns(const MdbTableDef& table) {
  std::vector<const MdbColumn*> columns;
  std::ranges::copy_if(items<MdbColumn>(table.columns), std::back_inserter(columns),
                       [](const MdbColumn* column) { return find_type(column->col_type) != nullptr; });
  return columns;
}

SourceTable describe(const MdbTableDef& table, JetVersion version) {
  SourceTable found;
  found.name = table.entry->object_name;
  found.validation_rule = text_or_nothing(mdb_table_get_prop(&table, "ValidationRule"));
  found.validation_text = text_or_nothing(mdb_table_get_prop(&table, "ValidationText"));
  for (const MdbColumn* column : items<MdbColumn>(table.columns)) {
    const TypeRow* row = find_type(column->col_type);
    if (row) {
      found.fields.push_back(describe(*column, *row, version));
    } else {
      found.foreign_fields.emplace_back(column->name);
    }
  }
  FoundIndexes indexes = find_indexes(table, version);
  found.indexes = std::move(indexes.indexes);
  found.unreadable_indexes = std::move(indexes.unreadable);
  // A file that was not closed properly may say 0.
  if (table.num_rows > 0) found.row_count = table.num_rows;
  return found;
}

}  // namespace jet_import
