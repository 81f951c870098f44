// The words that the ladder's table is written in: a step leads to a minor version and has a purpose and actions; an
// action is a function and what it works on.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "database/environment.h"
#include "database/schema/schema.h"
#include "support/error.h"

namespace database::upgrade {

/// One run of the ladder, as its actions see it. Each statement of an action is a step of the procedure.
struct Run {
  const Environment& environment;
  engine::Database& database;
  support::Procedure& procedure;
  /// Set by an action where its step is not to count as done.
  bool passed_over = false;
  bool pump_data_converted = false;
};

struct Action {
  void (*act)(Run& run, const Action& action, std::string_view table) = nullptr;
  /// The table that it works on, or the tables, one after the other.
  std::string_view table = {};
  std::span<const std::string_view> tables = {};
  /// What it adds or sets; a property that is not given is left as it is.
  schema::FieldRow field = {};
  /// A statement, or another name.
  std::string_view text = {};
  /// Field names: in place of the field's own, or in their order.
  std::span<const std::string_view> names = {};
  /// Not 0 in a row of the table that opens a step; its text is the purpose.
  std::int16_t version = 0;
};

struct Step {
  std::int16_t version;  ///< the minor version that it leads to
  std::string_view purpose;
  std::span<const Action> actions;
};

/// The ladder, lowest version first.
std::span<const Step> steps();

}  // namespace database::upgrade
