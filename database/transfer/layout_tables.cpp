#include "database/transfer/layout_tables.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "database/layout_json.h"
#include "database/transfer/value_text.h"
#include "support/text.h"

namespace transfer {
namespace {

using jet_import::SourceField;
using jet_import::SourceIndex;

[[noreturn]] void refuse(const std::string& what) {
  throw support::RuntimeError(unknown_format, "The list of tables, fields and indexes is not whole: " + what);
}

std::string yes_or_no(bool value) { return value ? "yes" : "no"; }

bool is_yes(const std::string& word) {
  if (word != "yes" && word != "no") refuse("\"" + word + "\" is neither yes nor no");
  return word == "yes";
}

template <typename Number>
Number number_of_word(const std::string& word) {
  const auto number = support::parse_whole<Number>(word);
  if (!number) refuse("\"" + word + "\" is no number");
  return *number;
}

engine::DataType type_of_word(const std::string& word) {
  using enum engine::DataType;
  for (const engine::DataType type : {Boolean, Byte, Integer, Long, Single, Double, Date, Text, Memo}) {
    if (database::type_word(type) == word) return type;
  }
  refuse("\"" + word + "\" is no type");
}

void require_columns(const TextRow& row, const LayoutTable& list) {
  if (row.size() != list.columns.size()) refuse("a row of " + std::string(list.name) + " has other columns");
}

StoredTable& table_named(std::vector<StoredTable>& tables, const std::string& name) {
  const auto found = std::ranges::find_if(tables, [&](const StoredTable& stored) { return stored.table.name == name; });
  if (found == tables.end()) refuse("there is no table " + name);
  return *found;
}

StoredTable table_of_row(const TextRow& row) {
  require_columns(row, table_list());
  StoredTable stored;
  stored.table.name = row[0];
  stored.file = row[1];
  stored.encoding = row[2];
  stored.rows = number_of_word<std::int64_t>(row[3]);
  stored.table.row_count = stored.rows;
  stored.table.validation_rule = row[4];
  stored.table.validation_text = row[5];
  return stored;
}

SourceField field_of_row(const TextRow& row) {
  SourceField field;
  field.name = row[1];
  field.type = type_of_word(row[2]);
  field.size = number_of_word<std::int32_t>(row[3]);
  field.attributes = number_of_word<std::int32_t>(row[4]);
  field.ordinal_position = number_of_word<std::int16_t>(row[5]);
  field.default_value = row[6];
  field.required = is_yes(row[7]);
  field.allow_zero_length = is_yes(row[8]);
  field.validation_rule = row[9];
  field.validation_text = row[10];
  return field;
}

SourceIndex index_of_row(const TextRow& row) {
  return {row[1], {}, is_yes(row[3]), is_yes(row[4]), is_yes(row[5]), is_yes(row[6]), is_yes(row[7])};
}

/// The properties that are the same in all rows of an index.
auto kind_of(const SourceIndex& index) {
  return std::tie(index.primary, index.unique, index.required, index.ignore_nulls, index.clustered);
}

void add_index_field(StoredTable& stored, const TextRow& row) {
  std::vector<SourceIndex>& indexes = stored.table.indexes;
  const auto found = std::ranges::find(indexes, row[1], &SourceIndex::name);
  const SourceIndex described = index_of_row(row);
  SourceIndex& index = found != indexes.end() ? *found : indexes.emplace_back(described);
  if (kind_of(index) != kind_of(described)) refuse("the rows of index " + row[1] + " contradict each other");
  index.fields.push_back(row[2]);
}

}  // namespace

const LayoutTable& table_list() {
  static const LayoutTable list{"_tables", {"Table", "File", "Encoding", "Rows", "Rule", "RuleText"}};
  return list;
}

const LayoutTable& field_list() {
  static const LayoutTable list{"_fields",
                                {"Table", "Field", "Type", "Size", "Attributes", "Ordinal", "Default", "Required",
                                 "AllowZeroLength", "Rule", "RuleText"}};
  return list;
}

const LayoutTable& index_list() {
  static const LayoutTable list{
      "_indexes", {"Table", "Index", "Field", "Primary", "Unique", "Required", "IgnoreNulls", "Clustered"}};
  return list;
}

void add_layout(LayoutRows& rows, const StoredTable& stored) {
  const jet_import::SourceTable& table = stored.table;
  rows.tables.push_back({table.name, stored.file, stored.encoding, std::to_string(stored.rows), table.validation_rule,
                         table.validation_text});
  for (const SourceField& field : table.fields) {
    rows.fields.push_back({table.name, field.name, std::string(database::type_word(field.type)),
                           std::to_string(field.size), std::to_string(field.attributes),
                           std::to_string(field.ordinal_position), field.default_value, yes_or_no(field.required),
                           yes_or_no(field.allow_zero_length), field.validation_rule, field.validation_text});
  }
  for (const SourceIndex& index : table.indexes) {
    for (const std::string& field : index.fields) {
      rows.indexes.push_back({table.name, index.name, field, yes_or_no(index.primary), yes_or_no(index.unique),
                              yes_or_no(index.required), yes_or_no(index.ignore_nulls), yes_or_no(index.clustered)});
    }
  }
}

std::vector<StoredTable> stored_tables(const LayoutRows& rows) {
  std::vector<StoredTable> tables;
  for (const TextRow& row : rows.tables) tables.push_back(table_of_row(row));
  for (const TextRow& row : rows.fields) {
    require_columns(row, field_list());
    table_named(tables, row[0]).table.fields.push_back(field_of_row(row));
  }
  for (const TextRow& row : rows.indexes) {
    require_columns(row, index_list());
    add_index_field(table_named(tables, row[0]), row);
  }
  return tables;
}

}  // namespace transfer
