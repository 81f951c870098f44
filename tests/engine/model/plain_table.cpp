#include "tests/engine/model/plain_table.h"

#include <algorithm>
#include <cmath>

#include "support/encoding.h"

namespace engine::test::model {

int new_identity() {
  static int last = 0;
  return ++last;
}

PlainField* PlainTable::field(std::string_view name) {
  const auto found = std::ranges::find(fields, name, &PlainField::name);
  return found == fields.end() ? nullptr : &*found;
}

const PlainField* PlainTable::field(int wanted) const {
  const auto found = std::ranges::find(fields, wanted, &PlainField::identity);
  return found == fields.end() ? nullptr : &*found;
}

bool PlainTable::shows(int wanted, std::string_view name) const {
  const PlainField* const found = field(wanted);
  return found != nullptr && found->name == name;
}

PlainRow* PlainTable::row(int wanted) {
  const auto found = std::ranges::find(rows, wanted, &PlainRow::identity);
  return found == rows.end() ? nullptr : &*found;
}

const PlainField* PlainTable::numbered_field() const {
  const auto found = std::ranges::find(fields, true, &PlainField::numbered);
  return found == fields.end() ? nullptr : &*found;
}

Values PlainTable::new_values() const {
  Values values;
  for (const PlainField& field : fields) {
    values[field.identity] = Null{};
    if (field.type == DataType::Boolean) values[field.identity] = false;
    if (field.numbered) values[field.identity] = untold_number;
  }
  return values;
}

bool PlainTable::is_taken(const Value& unique_value, int row) const {
  const auto unique = std::ranges::find(fields, "l", &PlainField::name);
  if (is_null(unique_value) || unique == fields.end()) return false;
  return std::ranges::any_of(rows, [&](const PlainRow& other) {
    return other.identity != row && other.values.at(unique->identity) == unique_value;
  });
}

Errors store(const PlainField& field, const Value& given, Value& stored) {
  stored = given;
  if (is_null(given)) {
    if (field.type == DataType::Boolean) stored = false;
    return {};
  }
  if (const auto* number = std::get_if<std::int32_t>(&given)) {
    const bool fits_byte = *number >= 0 && *number <= 255;
    const bool fits_integer = *number >= -32768 && *number <= 32767;
    if (field.type == DataType::Byte && !fits_byte) return {3421};
    if (field.type == DataType::Integer && !fits_integer) return {3421};
  }
  if (const auto* number = std::get_if<double>(&given); number && !std::isfinite(*number)) return {3421};
  if (const auto* text = std::get_if<std::string>(&given)) {
    if (!support::is_utf8(*text)) return {3421};
    if (text->empty() && !field.takes_empty) return {3315};
    if (field.type == DataType::Text && support::character_count(*text) > text_size) return {3163};
  }
  return {};
}

PlainRecordset::PlainRecordset(const PlainTable& source, const std::vector<std::string>& names)
    : table(source.identity) {
  for (const PlainField& field : source.fields) {
    if (names.empty() || std::ranges::find(names, field.name) != names.end()) {
      columns.push_back({field.name, field.identity});
    }
  }
  for (const PlainRow& row : source.rows) rows.push_back({row.identity, row.values, false, {}});
  if (!rows.empty()) place = Place::Row;
}

std::size_t PlainRecordset::remaining() const {
  return static_cast<std::size_t>(std::ranges::count(rows, false, &Shown::deleted));
}

Errors PlainRecordset::row_errors() const {
  if (place != Place::Row) return {3021};
  return rows[at].deleted ? Errors{3167} : Errors{};
}

Errors PlainRecordset::move_to_end(bool last) {
  editing = Editing::None;
  if (remaining() == 0) {
    place = Place::Before;
    return {3021};
  }
  place = Place::Row;
  at = last ? rows.size() - 1 : 0;
  while (rows[at].deleted) last ? --at : ++at;
  return {};
}

Errors PlainRecordset::move_by_one(bool forward) {
  editing = Editing::None;
  if (forward ? eof() : bof()) return {3021};
  std::size_t next = at;
  if (place != Place::Row) {
    next = forward ? 0 : rows.size() - 1;
  } else {
    next = forward ? at + 1 : at - 1;
  }
  // Before the first row the position wraps around; it then is no row's position, either.
  while (next < rows.size() && rows[next].deleted) forward ? ++next : --next;
  if (next < rows.size()) {
    place = Place::Row;
    at = next;
  } else {
    place = forward ? Place::After : Place::Before;
  }
  return {};
}

}  // namespace engine::test::model
