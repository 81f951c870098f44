#include "apps/patientdb/engine_option.h"

#include <algorithm>
#include <iterator>

#include "database/engine/engine_choice.h"

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

}  // namespace

engine::EngineFactory engine_of(const console::Arguments& arguments) {
  const std::string name = arguments.value(engine_option.name).value_or("auto");
  const auto* found = std::ranges::find(engines, std::string_view(name), &NamedEngine::name);
  if (found != std::end(engines)) return found->open;
  throw console::UsageError("--engine takes auto, embedded or automation, not \"" + name + "\".");
}

}  // namespace patientdb
