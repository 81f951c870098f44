#include "apps/patientdb/engine_option.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>

#include "database/engine/choice/engine_choice.h"
#include "support/encoding.h"
#include "support/error.h"

namespace patientdb {
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
      // Not this one.
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
