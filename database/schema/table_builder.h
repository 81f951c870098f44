// Tables made from the rows of the schema, or changed after them. Each change is a step of its own, so that a field
// that fails is left out and the rest is there.
#pragma once

#include <string_view>

#include "database/engine/engine.h"
#include "database/schema/schema.h"
#include "support/error.h"

namespace database::schema {

/// Builds one field and appends it.
void append_field(support::Procedure& procedure, engine::TableDef& table, const FieldRow& row);

/// Hands the properties that are given to a field.
void set_properties(support::Procedure& procedure, engine::Field& field, const FieldRow& row);

/// Builds one table and appends it.
void create_table(engine::Database& database, const TableRow& table);

/// Every Text field of the table takes empty texts from now on.
void allow_empty_texts(support::Procedure& procedure, engine::Database& database, std::string_view table);

/// True where the table has a field of this name, without regard to case.
bool has_field(engine::TableDef& table, std::string_view name);

}  // namespace database::schema
