// How the console tool prints a database: a field's value as a cell for people or as JSON for programs, never in the
// user's locale, and the tables of a database that was copied or checked.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "apps/console/text_table.h"
#include "database/engine/engine.h"
#include "database/keeping/table_fingerprint.h"
#include "support/json_writer.h"

namespace patientdb {

/// The value for people: Null is "", Yes/No is -1 or 0, a date is "YYYY-MM-DD HH:MM:SS", a number its shortest text.
std::string cell(const engine::Value& value);

/// "YYYY-MM-DD".
std::string day_text(engine::Date date);

/// Null if there is no date.
engine::Value date_or_null(const std::optional<engine::Date>& date);

/// Null becomes null, a date becomes a text.
void write_json(support::JsonWriter& json, const engine::Value& value);

/// Numbers are aligned to the right.
console::TextTable::Align alignment(engine::DataType type);

/// "43 tables, 120 rows"
void write_sum(std::ostream& out, const std::vector<database::keeping::TableFingerprint>& tables);

/// Writes a list of objects: table, rows, checksum (16 hexadecimal digits).
void write_tables(support::JsonWriter& json, const std::vector<database::keeping::TableFingerprint>& tables);

}  // namespace patientdb
