// Files as the test server writes them: they begin as the Jet engine's do, and name the file that holds the database.
#pragma once

#include <string>
#include <string_view>

namespace test_server {

/// Creates the file and returns the path of the database that it names, which is not there yet. 3204 where a file is
/// there, 3044 where its folder is not.
std::string create_jet_file(const std::string& path);

/// The path of the database that the file names. 3024 for a missing file, 3343 for one of another engine.
std::string database_of_jet_file(const std::string& path);

/// The statement with the databases in place of the files that it names after " IN ".
std::string with_databases(std::string_view statement);

}  // namespace test_server
