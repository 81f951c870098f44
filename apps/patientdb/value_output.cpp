#include "apps/patientdb/value_output.h"

#include <fmt/core.h>

#include "database/keeping/table_fingerprint.h"

namespace patientdb {
namespace {

struct CellText {
  std::string operator()(engine::Null) const { return {}; }
  std::string operator()(bool value) const { return value ? "-1" : "0"; }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(float value) const { return support::plain_number(value); }
  std::string operator()(double value) const { return support::plain_number(value); }
  std::string operator()(engine::Date value) const { return engine::iso_text(value); }
  std::string operator()(const std::string& value) const { return value; }
};

struct JsonValue {
  support::JsonWriter& json;
  void operator()(engine::Null) const { json.null(); }
  void operator()(bool value) const { json.integer(value ? -1 : 0); }
  void operator()(std::int32_t value) const { json.integer(value); }
  void operator()(float value) const { json.number(value); }
  void operator()(double value) const { json.number(value); }
  void operator()(engine::Date value) const { json.text(engine::iso_text(value)); }
  void operator()(const std::string& value) const { json.text(value); }
};

}  // namespace

std::string cell(const engine::Value& value) { return std::visit(CellText{}, value); }

std::string day_text(engine::Date date) { return engine::iso_text(date).substr(0, 10); }

engine::Value date_or_null(const std::optional<engine::Date>& date) {
  return date ? engine::Value(*date) : engine::Value(engine::Null{});
}

void write_json(support::JsonWriter& json, const engine::Value& value) { std::visit(JsonValue{json}, value); }

console::TextTable::Align alignment(engine::DataType type) {
  using enum engine::DataType;
  const bool text = type == Text || type == Memo || type == Date;
  return text ? console::TextTable::Align::Left : console::TextTable::Align::Right;
}

void write_sum(std::ostream& out, const std::vector<database::keeping::TableFingerprint>& tables) {
  out << tables.size() << " tables, " << database::keeping::row_count(tables) << " rows";
}

void write_tables(support::JsonWriter& json, const std::vector<database::keeping::TableFingerprint>& tables) {
  json.begin_array();
  for (const database::keeping::TableFingerprint& table : tables) {
    json.begin_object().key("table").text(table.table).key("rows").integer(table.rows);
    json.key("checksum").text(fmt::format("{:016x}", table.checksum)).end_object();
  }
  json.end_array();
}

}  // namespace patientdb
