// The layout of a patient database as data: its 43 tables in the order of creation, and the table of the index database.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "database/engine/engine.h"

namespace database::schema {

/// A property that is not given is left at the engine's default.
struct FieldRow {
  std::string_view name;
  engine::DataType type;
  std::int32_t size = 0;                              ///< 0: not given
  std::optional<std::int32_t> attributes = {};
  std::optional<std::string_view> default_value = {};
  std::optional<bool> required = {};
  std::optional<bool> allow_zero_length = {};
  std::optional<std::int16_t> ordinal = {};
};

struct IndexRow {
  std::string_view name;
  std::string_view field;
};

struct TableRow {
  std::string_view name;
  std::span<const FieldRow> fields;
  std::span<const IndexRow> indexes;
};

/// All 43 tables in the order of creation. The documentation tables are not among `tables()` by shape: they are built by
/// Field_Create and Index_Create, see ddg.h; here they stand as rows without fields.
std::span<const TableRow> tables();

/// A table by name, without regard to case; null where there is none.
const TableRow* find_table(std::string_view name);

/// The nine tables that hold the diary's entries, in the order of the repair pass.
std::span<const std::string_view> data_tables();

/// Builds one table and appends it: each statement is a step of its own, so that a failing field is left out.
void create_table(engine::Database& database, const TableRow& table);

}  // namespace database::schema
