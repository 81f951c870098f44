// Makes tables from the rows of the schema, and changes them afterwards. Each change is a step of its own: a field that
// fails is left out, and everything else is made.
#pragma once

#include <string_view>

#include "database/engine/engine.h"
#include "database/schema/schema.h"
#include "support/error.h"

namespace database::schema {

/// Builds one field and appends it.
void append_field(support::Procedure& procedure, engine::TableDef& table, const FieldRow& row);

/// Sets the properties that are given on a field.
void set_properties(support::Procedure& procedure, engine::Field& field, const FieldRow& row);

/// Builds one table and appends it.
void create_table(engine::Database& database, const TableRow& table);

/// From now on every Text field of the table takes empty texts.
void allow_empty_texts(support::Procedure& procedure, engine::Database& database, std::string_view table);

/// True where the table has a field of this name. Case does not count.
bool has_field(engine::TableDef& table, std::string_view name);

}  // namespace database::schema
