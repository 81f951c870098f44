// Everything that a database holds, as text, for comparison with an earlier state.
#pragma once

#include <string>
#include <string_view>

namespace faults {

/// "(no file)", or layout and rows of all tables with the engine's own data. Opening the file undoes what a process
/// that died left half done. Raises what the engine raises, and 3343 if the file is inconsistent.
std::string database_state(const std::string& host_path, std::string_view password);

/// The part of a state that describes one table; empty if there is none.
std::string table_state(std::string_view state, std::string_view table);

}  // namespace faults
