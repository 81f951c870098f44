// The words in which the ladder's table is written. A step leads to a minor version and has a purpose and actions. An
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
  /// An action sets it where its step must not count as done.
  bool passed_over = false;
  bool pump_data_converted = false;
};

struct Action {
  void (*act)(Run& run, const Action& action, std::string_view table) = nullptr;
  /// The table that the action works on, or several tables, one after the other.
  std::string_view table = {};
  std::span<const std::string_view> tables = {};
  /// What the action adds or sets. A property that is not given stays as it is.
  schema::FieldRow field = {};
  /// A statement, or a new name.
  std::string_view text = {};
  /// Names of fields: they replace the name of `field`, or give an order.
  std::span<const std::string_view> names = {};
  /// Not 0 in a row that opens a step; `text` is then the step's purpose.
  std::int16_t version = 0;
};

struct Step {
  std::int16_t version;  ///< the minor version to which the step leads
  std::string_view purpose;
  std::span<const Action> actions;
};

/// The ladder, lowest version first.
std::span<const Step> steps();

}  // namespace database::upgrade
