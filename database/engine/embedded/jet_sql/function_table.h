// The functions of the dialect as a table: what each takes and returns, and the SQLite function behind it.
#pragma once

#include <cstddef>
#include <string_view>

#include "database/engine/embedded/jet_sql/value_type.h"

namespace engine::embedded::jet_sql {

enum class FunctionForm {
  Plain,       ///< one call of the SQLite function
  Conversion,  ///< the same; Null is error 94 where it is a constant, and stays Null where it is a column
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
  FirstText,      ///< a text that is no longer than the first argument
  FirstArgument,  ///< the first argument's type; Double for a text where numbers are taken
  CommonType,     ///< the common type of the arguments that can be the result
};

struct FunctionRow {
  std::string_view name;
  FunctionForm form;
  std::string_view sqlite_name;
  /// A letter for each argument: n number, i number followed by the bits of its type (16 or 32), w number as the user
  /// sees it (a Single in its shortest form), t text, d date, c condition, v anything (the SQLite function has a second
  /// form for dates, "…_date"), x anything. A "*" repeats the letter before it.
  std::string_view arguments;
  std::size_t required;
  ResultRule rule;
  Kind result;
  /// The largest number of characters of a text that is never empty; 0 where that is not known.
  std::int32_t size = 0;
};

/// Null for an unknown function. A "$" at the name's end makes no difference.
const FunctionRow* find_function(std::string_view name) noexcept;

/// The letter of an argument; '\0' where the function does not take so many.
char argument_letter(const FunctionRow& row, std::size_t position) noexcept;

}  // namespace engine::embedded::jet_sql
