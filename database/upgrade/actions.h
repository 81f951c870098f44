// What the rows of the ladder can do, each to one table. The statements of an action are steps of the run's procedure.
#pragma once

#include <string_view>

#include "database/upgrade/steps.h"

namespace database::upgrade {

/// Runs the table procedure; a table that exists stays as it is.
void create_table(Run& run, const Action& action, std::string_view table);
/// The same without a failing step where the table exists.
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
