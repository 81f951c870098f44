// Changes of a database's layout, as the object model and the statements of the dialect both make them. Each happens as
// a whole or not at all; a refused one raises the engine's number.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/engine/embedded/catalogue.h"
#include "database/engine/embedded/session.h"

namespace engine::embedded::layout {

/// A definition as CreateField makes it: attributes and size as the type has them. A size above 0 is taken for Text.
FieldDefinition new_field(std::string_view name, DataType type, std::int32_t size);

/// A definition that a statement gives, with what it leaves open: attributes and size as the type has them.
FieldDefinition completed(const FieldDefinition& field);

/// What an appended definition must keep: 3125 its name, 3259 its type, 3001 its size; its default must be an
/// expression.
void check_field(const FieldDefinition& field);
/// 3409 where a field is not among `fields`, 3264 without a field, 3283 a second primary index, 3284 its name is taken.
void check_index(const IndexDefinition& index, const TableDefinition& table);

/// Returns the table's identity in the catalogue.
std::int64_t create_table(Session& session, const TableDefinition& table);
void drop_table(Session& session, std::int64_t table);
/// Properties of the table itself; another name renames it.
void change_table(Session& session, std::int64_t table, const TableDefinition& properties);

void add_field(Session& session, std::int64_t table, const FieldDefinition& field);
/// Every property but the type; another name renames the field.
void change_field(Session& session, std::int64_t table, std::string_view field, const FieldDefinition& changed);
/// A field of another type or size, its values converted: 3421 or 3163 where one cannot be.
void convert_field(Session& session, std::int64_t table, const FieldDefinition& changed);
void drop_field(Session& session, std::int64_t table, std::string_view field);

void create_index(Session& session, std::int64_t table, const IndexDefinition& index);
void drop_index(Session& session, std::int64_t table, std::string_view index);

}  // namespace engine::embedded::layout
