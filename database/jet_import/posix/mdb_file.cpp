#include "database/jet_import/posix/mdb_file.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "database/jet_import/posix/mdb_indexes.h"
#include "support/error.h"
#include "support/text.h"

namespace jet_import {
namespace {

/// The type that a column's type becomes. Money, decimals and replication numbers have no type of their own here.
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

namespace {

[[noreturn]] void damaged() {
  throw support::RuntimeError(support::error_number::unknown_format, "the value cannot be read: the file is damaged");
}

template <typename Number>
Number number_at(std::string_view bytes, std::size_t offset = 0) {
  Number number{};
  if (bytes.size() < offset + sizeof number) damaged();
  std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}

/// The row of another page, found by the number that leads to it.
std::string_view row_bytes(MdbHandle& file, std::uint32_t page_row) {
  void* page = nullptr;
  int offset = 0;
  std::size_t size = 0;
  if (mdb_find_pg_row(&file, static_cast<int>(page_row), &page, &offset, &size) != 0) damaged();
  return {static_cast<const char*>(page) + offset, size};
}

/// A long value is stored behind its head in the row, in one row of another page, or in a chain of such rows.
std::string long_value(MdbHandle& file, std::string_view field) {
  constexpr std::uint32_t inside = 0x80000000U, one_row = 0x40000000U;
  const auto head = number_at<std::uint32_t>(field);
  const std::size_t size = head & ~(inside | one_row);
  auto page_row = number_at<std::uint32_t>(field, 4);
  std::string bytes;
  if ((head & inside) != 0) {
    bytes = field.substr(std::min<std::size_t>(field.size(), MDB_MEMO_OVERHEAD));
  } else if ((head & one_row) != 0) {
    bytes = row_bytes(file, page_row);
  } else {
    while (bytes.size() < size && page_row != 0) {
      const std::string_view link = row_bytes(file, page_row);
      page_row = number_at<std::uint32_t>(link);
      if (link.size() == sizeof page_row) damaged();
      bytes += link.substr(sizeof page_row);
    }
  }
  if (bytes.size() < size) damaged();
  bytes.resize(size);
  return bytes;
}

std::string_view bytes_of(const MdbField& field) {
  if (field.siz < 0) damaged();
  return {static_cast<const char*>(field.value), static_cast<std::size_t>(field.siz)};
}

/// Both are stored as whole numbers; libmdb prints them with a decimal point.
double decimal(const char* text) {
  constexpr std::size_t exact_digits = 15;
  std::string_view rest(text);
  const auto number = support::parse_whole<double>(rest);
  if (!number) damaged();
  if (rest.starts_with('-')) rest.remove_prefix(1);
  std::string digits(rest);
  std::erase(digits, '.');
  digits.erase(0, digits.find_first_not_of('0'));
  if (digits.size() > exact_digits)
    throw support::RuntimeError(support::error_number::overflow, "Overflow: " + std::string(text));
  return *number;
}

using MdbText = std::unique_ptr<char, decltype([](char* text) { g_free(text); })>;

/// "{00112233-4455-6677-8899-AABBCCDDEEFF}". The first three groups are stored as numbers, the others byte by byte.
std::string replication_number(std::string_view bytes) {
  constexpr std::size_t order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  constexpr std::string_view digits = "0123456789ABCDEF";
  if (bytes.size() < std::size(order)) damaged();
  std::string text = "{";
  for (std::size_t i = 0; i < std::size(order); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    const auto byte = static_cast<std::uint8_t>(bytes[order[i]]);
    text.append({digits[byte >> 4U], digits[byte & 15U]});
  }
  return text + "}";
}

/// libmdb reads these values from the row's page.
std::string page_text(MdbHandle& file, const MdbColumn& column, const MdbField& field) {
  constexpr int decimal_bytes = 17, money_bytes = 8;
  const auto text = [&](int size, auto&& convert) {
    if (field.siz < size) damaged();
    const MdbText made(convert());
    return std::string(made ? made.get() : "");
  };
  if (column.col_type == MDB_MONEY) {
    return text(money_bytes, [&] { return mdb_money_to_string(&file, field.start); });
  }
  return text(decimal_bytes,
              [&] { return mdb_numeric_to_string(&file, field.start, column.col_scale, column.col_prec); });
}

}  // namespace

engine::Value mdb_value(MdbHandle& file, JetVersion version, const MdbColumn& column, const MdbField& field) {
  // Yes and No are stored in the mark of Null.
  if (column.col_type == MDB_BOOL) return field.is_null == 0;
  if (field.is_null != 0) return engine::Null{};
  const std::string_view bytes = bytes_of(field);
  switch (column.col_type) {
    case MDB_BYTE:
      return std::int32_t{number_at<std::uint8_t>(bytes)};
    case MDB_INT:
      return std::int32_t{number_at<std::int16_t>(bytes)};
    case MDB_LONGINT:
      return number_at<std::int32_t>(bytes);
    case MDB_FLOAT:
      return number_at<float>(bytes);
    case MDB_DOUBLE:
      return number_at<double>(bytes);
    case MDB_DATETIME:
      return engine::Date{number_at<double>(bytes)};
    case MDB_TEXT:
      return jet_text(version, bytes);
    case MDB_MEMO:
      return jet_text(version, long_value(file, bytes));
    case MDB_REPID:
      return replication_number(bytes);
    default:
      return decimal(page_text(file, column, field).c_str());
  }
}

std::string mdb_long_value(MdbHandle& file, const MdbField& field) { return long_value(file, bytes_of(field)); }

}  // namespace jet_import
