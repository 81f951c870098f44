// Changes of a database's layout, as the object model and the statements of the dialect both make them. Each happens as
// a whole or not at all; a refused one raises the engine's number.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/embedded/session.h"

namespace engine::embedded::layout {

/// What an appended definition must keep: 3125 its name, 3259 its type, 3001 its size; its default must be an
/// expression.
void check_field(const FieldDefinition& field);
/// 3409 where a field is not among `fields`, 3264 without a field, 3283 a second primary index, 3284 its name is taken.
void check_index(const IndexDefinition& index, const TableDefinition& table);

/// Returns the table's identity in the catalogue. 3010 where the name is taken, 3264 without a field, 3190 for more
/// than 255, 3191 for two of one name, 3219 for two AutoNumbers.
std::int64_t create_table(Session& session, const TableDefinition& table);
/// Tables are named by their identity: this and all below raise 3420 where there is none of it.
void drop_table(Session& session, std::int64_t table);
/// Changes properties of the table itself as they are in the file now; another name renames it. 3010 where that is
/// taken.
void change_table(Session& session, std::int64_t table, const std::function<void(TableDefinition&)>& change);

/// 3191 where the name is taken, 3190 for the 256th, 3219 for a second AutoNumber, which numbers the rows that are
/// there.
void add_field(Session& session, std::int64_t table, const FieldDefinition& field);
/// Changes properties of a field, by its identity, as they are in the file now, all but the type; another name renames
/// it. 3420 where the field is gone, 3191 where the name is taken.
void change_field(Session& session, std::int64_t table, std::int64_t field,
                  const std::function<void(FieldDefinition&)>& change);
/// A field of another type or size, its values converted: 3421 or 3163 where one cannot be.
void convert_field(Session& session, std::int64_t table, const FieldDefinition& changed);
/// 3265 where there is no such field, 3280 where an index uses it, 3264 for the only one.
void drop_field(Session& session, std::int64_t table, std::string_view field);

/// 3058 where a row has Null in a field of an index that forbids it, 3022 where two are alike in a unique one.
void create_index(Session& session, std::int64_t table, const IndexDefinition& index);
/// 3265 where there is no such index.
void drop_index(Session& session, std::int64_t table, std::string_view index);

}  // namespace engine::embedded::layout
