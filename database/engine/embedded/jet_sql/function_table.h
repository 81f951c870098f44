// The functions of the dialect as a table: what each takes and gives, and the SQLite function behind it.
#pragma once

#include <cstddef>
#include <string_view>

#include "database/engine/embedded/jet_sql/value_type.h"

namespace engine::embedded::jet_sql {

enum class FunctionForm {
  Plain,       ///< one call of the SQLite function
  Conversion,  ///< the same; Null of a constant is error 94, of a column Null
  Aggregate,   ///< the same, over the rows of a group
  // Written out as SQLite operators
  IsNull,
  IIf,
  Nz,
  Choose,
  Switch,
  Now,
  Today,
  TimeOfDay,
};

enum class ResultRule {
  Fixed,          ///< the row's kind
  FirstText,      ///< a text no longer than the first argument
  FirstArgument,  ///< the first argument's type; Double for a text where numbers are taken
  CommonType,     ///< what the arguments that can be the result have in common
};

struct FunctionRow {
  std::string_view name;
  FunctionForm form;
  std::string_view sqlite_name;
  /// A letter per argument: n number, i number with the bits of its type behind it (16 or 32), w number as the user
  /// sees it (a Single in its shortest form), t text, d date, c condition, v anything (the SQLite function has a second
  /// form for dates, "…_date"), x anything. A "*" repeats the letter before it.
  std::string_view arguments;
  std::size_t required;
  ResultRule rule;
  Kind result;
  /// Most characters of a text that is never empty; 0 where that is not known.
  std::int32_t size = 0;
};

/// Null for an unknown function. A "$" at the name's end makes no difference.
const FunctionRow* find_function(std::string_view name) noexcept;

/// Letter of an argument; '\0' where the function takes no so many.
char argument_letter(const FunctionRow& row, std::size_t position) noexcept;

}  // namespace engine::embedded::jet_sql
