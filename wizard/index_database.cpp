#include "wizard/index_database.h"

#include "database/create_database.h"
#include "database/index_database.h"
#include "support/file_system.h"

namespace wizard {

bool provide_index_database(const database::Environment& environment, std::string_view path) {
  if (support::file_test(environment.file_system(), path)) return true;
  return bring_index_up_to_date(environment, path);
}

bool bring_index_up_to_date(const database::Environment& environment, std::string_view path) {
  if (!support::file_test(environment.file_system(), path) && database::CreateIndexDatabase(environment, path) != 1) {
    return false;
  }
  database::Progress* progress = environment.progress;
  bool shown = false;
  const auto show = [&](const std::string& caption) {
    if (!progress) return;
    if (!shown) progress->start(caption, 100);
    shown = true;
    progress->set_caption(caption);
  };
  const bool upgraded = database::db_UpgradeIndexDatabase(environment, path, show);
  if (shown) progress->finish();
  return upgraded;
}

}  // namespace wizard
