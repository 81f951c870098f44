// What the rows of the ladder can do, each to one table. Each statement of an action is a step of the run's procedure.
#pragma once

#include <string_view>

#include "database/upgrade/steps.h"

namespace database::upgrade {

/// Runs the table procedure. A table that exists stays as it is.
void create_table(Run& run, const Action& action, std::string_view table);
/// Does the same, but without a failing step where the table exists.
void create_missing_table(Run& run, const Action& action, std::string_view table);
void delete_table(Run& run, const Action& action, std::string_view table);
/// The new name is the action's text.
void rename_table(Run& run, const Action& action, std::string_view table);
void add_field(Run& run, const Action& action, std::string_view table);
void add_missing_field(Run& run, const Action& action, std::string_view table);
void delete_field(Run& run, const Action& action, std::string_view table);
/// Sets the properties that the action's field gives.
void change_field(Run& run, const Action& action, std::string_view table);
/// Sets ordinal positions from 0, in the order of the action's names.
void order_fields(Run& run, const Action& action, std::string_view table);
/// From then on every Text field of the table takes empty texts.
void allow_empty_texts(Run& run, const Action& action, std::string_view table);
/// Changes defaults of "X" to a blank.
void blank_marked_defaults(Run& run, const Action& action, std::string_view table);
/// Gives the patient's row the zone times of the settings file, or their defaults, unless the row has any.
void add_zone_times(Run& run, const Action& action, std::string_view table);
/// Executes the action's text.
void execute(Run& run, const Action& action, std::string_view table);
/// Numbers the insulins from 0, ordered by sort position and manufacturer.
void number_insulins(Run& run, const Action& action, std::string_view table);
/// Moves the rows of the old import list, and deletes that list once all rows were copied. Reports the rows that
/// remain.
void move_imports(Run& run, const Action& action, std::string_view table);
/// Asks the user where there are many days. Passes the step over unless the answer is OK.
void convert_pump_data(Run& run, const Action& action, std::string_view table);
/// Runs the table procedure only if this run has converted the pump data.
void create_after_conversion(Run& run, const Action& action, std::string_view table);

}  // namespace database::upgrade
