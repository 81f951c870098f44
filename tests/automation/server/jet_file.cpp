#include "tests/automation/server/jet_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/error.h"

namespace test_server {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view beginning{"\0\1\0\0Standard Jet DB\0", 20};
constexpr std::size_t place_of_path = 64;

fs::path file_path(const std::string& path) { return fs::path(std::u8string(path.begin(), path.end())); }

}  // namespace

std::string create_jet_file(const std::string& path) {
  const fs::path file = file_path(path);
  if (fs::exists(file)) throw support::RuntimeError(3204, "Database already exists.");
  if (!fs::is_directory(file.parent_path())) throw support::RuntimeError(3044, "'" + path + "' is not a valid path.");
  std::string database = path + ".content";
  std::string content(beginning);
  content.resize(place_of_path);
  std::ofstream(file, std::ios::binary) << content << database;
  return database;
}

std::string database_of_jet_file(const std::string& path) {
  std::ifstream file(file_path(path), std::ios::binary);
  if (!file) throw support::RuntimeError(3024, "Could not find file '" + path + "'.");
  const std::string content{std::istreambuf_iterator<char>(file), {}};
  if (!content.starts_with(beginning))
    throw support::RuntimeError(3343, "Unrecognized database format '" + path + "'.");
  return content.substr(place_of_path);
}

std::string with_databases(std::string_view statement) {
  constexpr std::string_view mark = " IN '";
  const std::size_t place = statement.find(mark);
  if (place == std::string_view::npos) return std::string(statement);
  const std::size_t begin = place + mark.size();
  const std::size_t end = statement.find('\'', begin);
  std::string changed(statement);
  return changed.replace(begin, end - begin, database_of_jet_file(changed.substr(begin, end - begin)));
}

}  // namespace test_server
