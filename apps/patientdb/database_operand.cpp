#include "apps/patientdb/database_operand.h"

#include <fmt/core.h>

#include "apps/console/input_file.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/engine_option.h"
#include "database/environment.h"
#include "database/open_database.h"
#include "support/encoding.h"
#include "support/file_system.h"

namespace patientdb {
namespace {

constexpr std::uint64_t password_file_limit = 4096;

}  // namespace

std::string password_from_file(const std::string& host_path) {
  const std::string content = console::read_input_file("The password file", host_path, password_file_limit, "4 KiB");
  std::string_view line = support::without_byte_order_mark(content);
  line = line.substr(0, line.find_first_of("\r\n"));
  if (line.empty()) {
    throw console::InputError("The first line of the password file " + host_path +
                              " is empty. A database without password needs an empty PATIENTDB_PASSWORD.");
  }
  if (line.find('\0') != std::string_view::npos) {
    throw console::InputError("The password file " + host_path +
                              " holds a NUL in its first line: no password has one.");
  }
  if (!support::is_utf8(line)) throw console::InputError("The password file " + host_path + " is not UTF-8.");
  return std::string(line);
}

void check_new_password(std::string_view word) {
  const std::size_t size = support::character_count(word);
  if (size == 0 || (size >= database::shortest_password && size <= database::longest_password)) return;
  throw console::UsageError(
      fmt::format("A password has {} to {} characters.", database::shortest_password, database::longest_password));
}

std::string password(const console::Arguments& arguments, const console::Console& console) {
  if (const auto file = arguments.value(password_file_option.name)) return password_from_file(*file);
  return console.environment("PATIENTDB_PASSWORD").value_or(std::string(database::default_password));
}

std::string database_path(std::string_view host_path) {
  if (host_path.empty()) throw console::UsageError("The file's name is empty.");
  return support::host_file_system().windows_path(host_path);
}

OpenDatabase open_database(const console::Arguments& arguments, const console::Console& console, Access access) {
  const std::string word = password(arguments, console);
  OpenDatabase open;
  database::Environment environment;
  environment.open_engine = engine_of(arguments);
  open.engine = database::create_engine(environment, false);
  open.database = open.engine->open_database(database_path(arguments.operands().front()), false,
                                             access == Access::ReadOnly, database::connect_text(word));
  return open;
}

}  // namespace patientdb
