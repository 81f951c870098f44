// Files as the test server writes them: they begin as the Jet engine's do, and name another file that holds the
// database.
#pragma once

#include <string>
#include <string_view>

namespace test_server {

/// Creates the file and returns the path of the database that it names, which does not exist yet. Raises 3204 if the
/// file exists, 3044 if its folder does not.
std::string create_jet_file(const std::string& path);

/// The path of the database that the file names. Raises 3024 for a missing file, 3343 for a file of another engine.
std::string database_of_jet_file(const std::string& path);

/// The statement, in which the files behind " IN " are replaced by the databases that they name.
std::string with_databases(std::string_view statement);

}  // namespace test_server
