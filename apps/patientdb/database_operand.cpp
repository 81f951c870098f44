#include "apps/patientdb/database_operand.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>

#include "apps/patientdb/command.h"
#include "database/engine/choice/engine_choice.h"
#include "database/environment.h"
#include "database/open_database.h"
#include "support/encoding.h"
#include "support/error.h"
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

namespace {

struct NamedEngine {
  std::string_view name;
  engine::EngineFactory open;
};

constexpr NamedEngine engines[] = {
    {"auto", engine::open_engine},
    {"embedded", engine::open_embedded_engine},
    {"automation", engine::open_automation_engine},
};

bool is_automation_installed() {
  for (const std::string_view identifier : engine::automation_identifiers) {
    try {
      return engine::open_automation_engine(identifier) != nullptr;
    } catch (const support::RuntimeError&) {
      // This class is not installed; try the next one.
    }
  }
  return false;
}

}  // namespace

engine::EngineFactory engine_of(const console::Arguments& arguments) {
  const std::string name = arguments.value(engine_option.name).value_or("auto");
  const auto* found = std::ranges::find(engines, std::string_view(name), &NamedEngine::name);
  if (found != std::end(engines)) return found->open;
  throw console::UsageError("--engine takes auto, embedded or automation, not \"" + name + "\".");
}

void choose_maker(const console::Arguments& arguments, database::Environment& environment, std::ostream& err) {
  constexpr std::size_t longest_for_automation = 14;
  if (environment.password.empty() || environment.password == database::default_password) return;
  const std::string name = arguments.value(engine_option.name).value_or("auto");
  if (name == "automation") {
    if (support::character_count(environment.password) > longest_for_automation)
      throw console::UsageError(
          fmt::format("The Jet engine takes passwords of at most {} characters.", longest_for_automation));
    err << "The Jet engine does not encrypt the file: this password keeps accidents out, not people.\n";
  } else if (name == "auto") {
    environment.open_engine = engine::open_embedded_engine;
    if (is_automation_installed())
      err << "The embedded engine makes this file, since it encrypts it; the Jet engine does not open it.\n";
  }
}

}  // namespace patientdb
