#include "support/host.h"

#include <cstdlib>

#include "support/hive_registry.h"

namespace support {

namespace {

std::string user_hive_path() {
  const char* const configuration = std::getenv("XDG_CONFIG_HOME");
  if (configuration != nullptr && *configuration == '/') return std::string(configuration) + "/firststeps/registry.reg";
  const char* const home = std::getenv("HOME");
  return std::string(home != nullptr ? home : "") + "/.config/firststeps/registry.reg";
}

}  // namespace

std::unique_ptr<Registry> host_registry(std::string_view hive_path) {
  return open_hive(hive_path.empty() ? user_hive_path() : std::string(hive_path));
}

UserLocale host_locale() { return {}; }

void YieldToInput() {}

}  // namespace support
