// Changes of a database's layout, for the object model and for the statements of the dialect. Each change is made
// completely or not at all. A change that is refused raises the engine's number.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/embedded/session.h"

namespace engine::embedded::layout {

/// Checks a definition that is to be appended. Raises 3125 for its name, 3259 for its type, 3001 for its size, and what
/// compile_default() raises where its default is no expression.
void check_field(const FieldDefinition& field);
/// Raises 3409 where the table lacks one of the index's fields, 3264 without a field, 3283 for a second primary index,
/// 3284 where the name is taken.
void check_index(const IndexDefinition& index, const TableDefinition& table);

/// Returns the table's identity in the catalogue. Raises 3010 where the name is taken, 3264 without a field, 3190 for
/// more than 255 fields, 3191 for two fields of one name, 3219 for two AutoNumbers.
std::int64_t create_table(Session& session, const TableDefinition& table);
/// Tables are named by their identity. This and all functions below raise 3420 where no table has it.
void drop_table(Session& session, std::int64_t table);
/// Changes properties of the table as they are in the file now. Another name renames the table; raises 3010 where that
/// name is taken.
void change_table(Session& session, std::int64_t table, const std::function<void(TableDefinition&)>& change);

/// Raises 3191 where the name is taken, 3190 for the 256th field, 3219 for a second AutoNumber. A new AutoNumber field
/// numbers the existing rows.
void add_field(Session& session, std::int64_t table, const FieldDefinition& field);
/// Changes properties of a field, by its identity, as they are in the file now; all except the type. Another name
/// renames the field. Raises 3420 where the field is gone, 3191 where the name is taken.
void change_field(Session& session, std::int64_t table, std::int64_t field,
                  const std::function<void(FieldDefinition&)>& change);
/// Gives a field another type or size and converts its values. Raises 3421 or 3163 where a value cannot be converted.
void convert_field(Session& session, std::int64_t table, const FieldDefinition& changed);
/// Raises 3265 where there is no such field, 3280 where an index uses it, 3264 for the only field.
void drop_field(Session& session, std::int64_t table, std::string_view field);

/// Raises 3058 where a row has Null in a field of an index that forbids it, 3022 where two rows are alike in a unique
/// index.
void create_index(Session& session, std::int64_t table, const IndexDefinition& index);
/// Raises 3265 where there is no such index.
void drop_index(Session& session, std::int64_t table, std::string_view index);

}  // namespace engine::embedded::layout
