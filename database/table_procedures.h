// The table procedures: each of the 43 tables of a patient database by its name.
#pragma once

#include <string_view>

#include "database/environment.h"

namespace database {

/// Runs the table procedure of one of the 43 tables: its layout, and for `labdefs` its rows. Failing steps are
/// passed over; a name that is none of them does nothing.
void create_table(const Environment& environment, engine::Database& database, std::string_view name);

}  // namespace database
