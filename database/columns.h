// Records as tables of columns: each row of such a table says which member of a record stands in which column. Reading
// and writing walk the table. Each column is a step of its own, so one that fails is passed over.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "database/engine/engine.h"
#include "support/encoding.h"
#include "support/error.h"

namespace database {

template <typename Record>
struct Column {
  std::string_view name;
  std::variant<std::string Record::*, bool Record::*, std::uint8_t Record::*, std::int16_t Record::*,
               std::int32_t Record::*, float Record::*, double Record::*, engine::Date Record::*,
               std::optional<engine::Date> Record::*>
      member;
};

// Assigns a value to a member, converted as an assignment to a typed variable converts it. Raises what the conversions
// of engine/value.h raise, and 6 for a byte outside 0 to 255.
inline void assign(std::string& member, const engine::Value& value) { member = engine::to_text(value); }
inline void assign(bool& member, const engine::Value& value) { member = engine::to_bool(value); }
inline void assign(std::int16_t& member, const engine::Value& value) { member = engine::to_int16(value); }
inline void assign(std::int32_t& member, const engine::Value& value) { member = engine::to_int32(value); }
inline void assign(float& member, const engine::Value& value) { member = engine::to_single(value); }
inline void assign(double& member, const engine::Value& value) { member = engine::to_double(value); }
inline void assign(engine::Date& member, const engine::Value& value) { member = engine::to_date(value); }
inline void assign(std::uint8_t& member, const engine::Value& value) {
  const std::int16_t number = engine::to_int16(value);
  if (number < 0 || number > 255) throw support::RuntimeError(support::error_number::overflow, "Overflow");
  member = static_cast<std::uint8_t>(number);
}
inline void assign(std::optional<engine::Date>& member, const engine::Value& value) {
  member = engine::is_null(value) ? std::nullopt : std::optional(engine::to_date(value));
}

template <typename Member>
engine::Value value_of(const Member& member) {
  return member;
}
inline engine::Value value_of(std::uint8_t member) { return std::int32_t{member}; }
inline engine::Value value_of(std::int16_t member) { return std::int32_t{member}; }
inline engine::Value value_of(const std::optional<engine::Date>& member) {
  return member ? engine::Value(*member) : engine::Value(engine::Null{});
}

/// Reads one value into the column's member.
template <typename Record>
void assign_column(Record& record, const Column<Record>& column, const engine::Value& value) {
  std::visit([&](auto member) { assign(record.*member, value); }, column.member);
}

template <typename Record>
engine::Value column_value(const Record& record, const Column<Record>& column) {
  return std::visit([&](auto member) { return value_of(record.*member); }, column.member);
}

/// Reads the columns of the current row. A member whose column cannot be read keeps its value.
template <typename Record>
void read_columns(support::Procedure& procedure, const engine::Recordset& row, std::span<const Column<Record>> columns,
                  Record& record) {
  for (const auto& column : columns) {
    procedure.step([&] { assign_column(record, column, row.value(column.name)); });
  }
}

/// Writes the columns into the row that is being added or edited.
template <typename Record>
void write_columns(support::Procedure& procedure, engine::Recordset& row, std::span<const Column<Record>> columns,
                   const Record& record) {
  for (const auto& column : columns) {
    procedure.step([&] { row.set_value(column.name, column_value(record, column)); });
  }
}

/// True where the rows have a column of this name. Older layouts lack some columns.
inline bool has_column(const engine::Recordset& rows, std::string_view name) {
  for (std::int32_t i = 0; i < rows.field_count(); ++i) {
    if (support::equal_ignoring_case(rows.field_name(i), name)) return true;
  }
  return false;
}

/// Starts writing: edits the first row, or adds one where there is none.
inline void edit_or_add(engine::Recordset& rows) {
  if (rows.bof() && rows.eof()) {
    rows.add_new();
  } else {
    rows.move_first();
    rows.edit();
  }
}

}  // namespace database
