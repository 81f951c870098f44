#include "database/layout_json.h"

#include "support/json_writer.h"

namespace database {
namespace {

using support::json_text;

struct TypeWord {
  engine::DataType type;
  std::string_view word;
};

constexpr TypeWord type_words[] = {
    {engine::DataType::Boolean, "Boolean"}, {engine::DataType::Byte, "Byte"},
    {engine::DataType::Integer, "Integer"}, {engine::DataType::Long, "Long"},
    {engine::DataType::Single, "Single"},   {engine::DataType::Double, "Double"},
    {engine::DataType::Date, "Date"},       {engine::DataType::Text, "Text"},
    {engine::DataType::Memo, "Memo"},
};

std::string member(std::string_view name, const std::string& value) { return json_text(name) + ":" + value; }

std::string truth(bool value) { return value ? "true" : "false"; }

std::string field_json(const engine::Field& field) {
  return "{" + member("name", json_text(field.name())) + "," + member("type", json_text(type_word(field.type()))) +
         "," + member("size", std::to_string(field.size())) + "," +
         member("attributes", std::to_string(field.attributes())) + "," +
         member("default", json_text(field.default_value())) + "," + member("required", truth(field.required())) + "," +
         member("allow_zero_length", truth(field.allow_zero_length())) + "," +
         member("ordinal", std::to_string(field.ordinal_position())) + "}";
}

std::string index_json(engine::Index& index) {
  std::string fields;
  for (std::int32_t i = 0; i < index.fields().count(); ++i) {
    if (i > 0) fields += ",";
    fields += json_text(index.fields().item(i)->name());
  }
  return "{" + member("name", json_text(index.name())) + "," + member("fields", "[" + fields + "]") + "," +
         member("primary", truth(index.primary())) + "," + member("unique", truth(index.unique())) + "}";
}

/// Writes the items of a collection, each in a line of its own.
template <typename Collection, typename Text>
std::string list(const Collection& collection, Text text) {
  std::string json;
  for (std::int32_t i = 0; i < collection.count(); ++i) json += (i > 0 ? ",\n" : "\n") + text(*collection.item(i));
  return json.empty() ? "[]" : "[" + json + "\n]";
}

std::string table_json(engine::TableDef& table) {
  return "{" + member("name", json_text(table.name())) + "," + member("fields", list(table.fields(), field_json)) +
         "," + member("indexes", list(table.indexes(), index_json)) + "}";
}

}  // namespace

std::string_view type_word(engine::DataType type) noexcept {
  for (const TypeWord& row : type_words) {
    if (row.type == type) return row.word;
  }
  return "";
}

std::string layout_json(engine::Database& database, std::string_view table) {
  const std::string tables = table.empty() ? list(database.table_defs(), table_json)
                                           : "[\n" + table_json(*database.table_defs().item(table)) + "\n]";
  return "{" + member("tables", tables) + "}";
}

}  // namespace database
