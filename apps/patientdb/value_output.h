// A field's value as the console tool shows it: to a person as a cell, to a program as JSON. Never in the user's
// locale.
#pragma once

#include <optional>
#include <string>

#include "apps/console/text_table.h"
#include "database/engine/engine.h"
#include "support/json_writer.h"

namespace patientdb {

/// Null is "", Yes/No -1 or 0, a date "YYYY-MM-DD HH:MM:SS", a number its shortest text.
std::string cell(const engine::Value& value);

/// "YYYY-MM-DD".
std::string day_text(engine::Date date);

/// Null where there is no date.
engine::Value date_or_null(const std::optional<engine::Date>& date);

/// Null is null, a date a text.
void write_json(support::JsonWriter& json, const engine::Value& value);

/// Numbers stand to the right.
console::TextTable::Align alignment(engine::DataType type);

}  // namespace patientdb
