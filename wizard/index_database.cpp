#include "wizard/index_database.h"

#include "database/create_database.h"
#include "database/index_database.h"
#include "support/common_code.h"
#include "support/file_system.h"
#include "wizard/windows_path.h"

namespace wizard {

namespace {

/// False where the index is missing afterwards.
bool create_where_missing(Context& context) {
  constexpr int folder = static_cast<int>(support::PathPart::Folder);
  const std::string& path = context.config.IndexDB;
  if (support::file_test(*context.ports.files, path)) return true;
  context.ports.files->create_folder(support::ExtractFromPath(path, folder));
  const bool created = database::CreateIndexDatabase(context.environment(), path) == 1;
  context.index_created = created;
  return created;
}

}  // namespace

std::string index_in(std::string_view folder) { return join_path(folder, "index.mdb"); }

void provide_index_database(Context& context) {
  if (!support::file_test(*context.ports.files, context.config.IndexDB)) bring_index_up_to_date(context);
}

void bring_index_up_to_date(Context& context) {
  if (!create_where_missing(context)) return;
  const database::Environment environment = context.environment();
  database::Progress* progress = environment.progress;
  bool shown = false;
  const auto show = [&](const std::string& caption) {
    if (!progress) return;
    if (!shown) progress->start(caption, 100);
    shown = true;
    progress->set_caption(caption);
  };
  database::db_UpgradeIndexDatabase(environment, context.config.IndexDB, show);
  if (shown) progress->finish();
}

}  // namespace wizard
