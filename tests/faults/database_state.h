// Everything that a database holds, as text, to be compared with what it held before.
#pragma once

#include <string>
#include <string_view>

namespace faults {

/// "(no file)", or layout and rows of all tables with what the engine itself keeps. Opening it undoes what a process
/// that died left half done. Raises what the engine raises, and 3343 where the file does not hold together.
std::string database_state(const std::string& host_path, std::string_view password);

/// The part of a state that is about one table; empty where there is none.
std::string table_state(std::string_view state, std::string_view table);

}  // namespace faults
