// The layout of a patient database as data: its 43 tables in the order of creation, and the table of the index
// database. table_builder.h builds a table from its rows; the two documentation tables have a shape of their own
// (database/table_procedures.h).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "database/engine/engine.h"

namespace database::schema {

/// If a property is not given, the engine's default stays.
struct FieldRow {
  std::string_view name;
  engine::DataType type;
  std::int32_t size = 0;  ///< 0: not given
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

/// A field that Field_Create makes. Every property is given; no field is required.
struct DocumentationField {
  std::string_view name;
  engine::DataType type;
  std::int32_t size = 0;
  std::int32_t attributes = 0;
  std::string_view default_value = {};
  bool allow_zero_length = false;
};

/// An index that Index_Create makes. It is built before the field that it covers.
struct DocumentationIndex {
  std::string_view name;
  std::string_view field;
  engine::DataType field_type;
  bool primary = false;
};

struct DocumentationTable {
  std::string_view name;
  std::span<const DocumentationField> fields;
  std::span<const DocumentationIndex> indexes;
};

/// The tables of each subject, except the documentation tables.
extern const std::span<const TableRow> measurement_tables, patient_tables, reference_tables, plan_tables;

/// All 43 tables in the order of creation. The documentation tables are among them, as rows without fields.
std::span<const TableRow> tables();

/// Finds a table by its name, in which case does not count. Null where there is none.
const TableRow* find_table(std::string_view name);

/// `Behandlungsprofil` and `Labordefinitionen`.
extern const DocumentationTable treatment_profile, normal_values;

/// The one table of the patient index database.
extern const TableRow index_table;

/// The nine tables of the diary's entries, in the order in which the repair pass takes them.
std::span<const std::string_view> data_tables();

}  // namespace database::schema
