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

/// Runs the table procedure; a table that exists stays as it is.
void create_table(Run& run, const Action& action, std::string_view table);
/// The same without a failing statement where the table exists.
void create_missing_table(Run& run, const Action& action, std::string_view table);
void delete_table(Run& run, const Action& action, std::string_view table);
/// To the action's text.
void rename_table(Run& run, const Action& action, std::string_view table);
void add_field(Run& run, const Action& action, std::string_view table);
void add_missing_field(Run& run, const Action& action, std::string_view table);
void delete_field(Run& run, const Action& action, std::string_view table);
/// Sets the properties that the action's field gives.
void change_field(Run& run, const Action& action, std::string_view table);
/// Ordinal positions from 0, in the order of the action's names.
void order_fields(Run& run, const Action& action, std::string_view table);
/// Every Text field of the table takes empty texts.
void allow_empty_texts(Run& run, const Action& action, std::string_view table);
/// Defaults "X" become blank.
void blank_marked_defaults(Run& run, const Action& action, std::string_view table);
/// Gives the patient's row the zone times of the settings file or their defaults, unless it has any.
void add_zone_times(Run& run, const Action& action, std::string_view table);
/// Executes the action's text.
void execute(Run& run, const Action& action, std::string_view table);
/// Running numbers from 0 by order and manufacturer.
void number_insulins(Run& run, const Action& action, std::string_view table);
/// Moves the rows of the old import list, and deletes it once all of them have arrived. What remains is told.
void move_imports(Run& run, const Action& action, std::string_view table);
/// Asks where there are many days; passes the step over where the answer is not OK.
void convert_pump_data(Run& run, const Action& action, std::string_view table);
/// Runs the table procedure only where the pump data were converted in this run.
void create_after_conversion(Run& run, const Action& action, std::string_view table);

}  // namespace database::upgrade
