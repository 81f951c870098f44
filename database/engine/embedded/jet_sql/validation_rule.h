// Rules of fields and tables, which a stored row must not breach. A rule that this dialect does not know stays in the
// catalogue, but nothing checks it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

/// The name that the text of a rule uses for the row.
inline constexpr std::string_view rule_row = "jet_rule_row";

struct Rule {
  /// SQLite text that is true, or Null, for a value that may be stored.
  std::string condition;
  /// 3316 with the rule's own text, 3317 where it has none.
  error_number::Number error = error_number::none;
  std::string message;

  /// SQLite text that raises the error where the rule is breached, and otherwise is 1.
  std::string raising() const;
};

/// Nothing where the field has no rule or one that is not known: one that is no condition of the dialect, names other
/// fields or tables, or compares a text with a number.
std::optional<Rule> compile_rule(const FieldDefinition& field, const TableDefinition& table);
/// The table's own rule, which may name all its fields.
std::optional<Rule> compile_rule(const TableDefinition& table);

}  // namespace engine::embedded::jet_sql
