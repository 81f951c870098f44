// The layout of a database as JSON text. Tests and users of the console tool compare layouts by it.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/engine.h"

namespace database {

/// The type's word: Boolean, Byte, Integer, Long, Single, Double, Date, Text, Memo.
std::string_view type_word(engine::DataType type) noexcept;

/// {"tables":[{"name","fields":[{"name","type","size","attributes","default","required","allow_zero_length","ordinal"}],
/// "indexes":[{"name","fields":[…],"primary","unique"}]}]} in the order of appending, with a line for each field and
/// index. With a table name, only that table; raises 3265 where there is none.
std::string layout_json(engine::Database& database, std::string_view table = {});

}  // namespace database
