#include "database/upgrade.h"

#include <string>

namespace database {

bool needs_upgrade(const VersionRecord& record) noexcept {
  return record.MajVersion == current_major_version && record.MinVersion < current_minor_version;
}

void upgrade_ladder(const Environment&, engine::Database&, VersionRecord& record) {
  throw support::RuntimeError(3251, "no upgrade from layout " + std::to_string(record.MajVersion) + "." +
                                        std::to_string(record.MinVersion) + " is available");
}

}  // namespace database
