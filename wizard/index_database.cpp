#include "wizard/index_database.h"

#include <utility>

#include "database/create_database.h"
#include "database/index_database.h"
#include "database/opened_target.h"
#include "support/common_code.h"
#include "support/file_system.h"
#include "wizard/windows_path.h"

namespace wizard {

namespace {

/// Why the index could not be created; nothing where it was.
std::optional<support::RuntimeError> create(Context& context, const std::string& path) {
  constexpr int folder = static_cast<int>(support::PathPart::Folder);
  support::RuntimeError reason(support::error_number::path_file_access, "The folder cannot be created");
  const support::SkippedStatementWatch watch(
      [&reason](std::string_view, const support::RuntimeError& error) { reason = error; });
  context.ports.files->create_folder(support::ExtractFromPath(path, folder));
  if (database::CreateIndexDatabase(context.environment(), path) == 1) return std::nullopt;
  return reason;
}

/// False where the index is missing afterwards.
bool create_where_missing(Context& context) {
  const std::string path = context.config.IndexDB;
  if (support::file_test(*context.ports.files, path)) return true;
  auto failure = create(context, path);
  const bool created = !failure;
  std::erase_if(context.created_indexes, [&](const CreatedIndex& before) { return before.path == path; });
  context.created_indexes.push_back({path, std::move(failure)});
  return created;
}

}  // namespace

std::string index_in(std::string_view folder) { return join_path(folder, "index.mdb"); }

std::optional<support::RuntimeError> index_failure(const Context& context) {
  const std::string& path = context.config.IndexDB;
  if (!support::file_test(*context.ports.files, path)) return std::nullopt;
  std::optional<support::RuntimeError> failure;
  const support::SkippedStatementWatch watch(
      [&failure](std::string_view, const support::RuntimeError& error) { failure = error; });
  support::Procedure procedure{"wizard!IndexFailure"};
  const database::OpenedTarget index(context.environment(), path, database::OpenedTarget::Access::Read);
  if (index.get()) procedure.step([&] { index.database().open_recordset("SELECT * FROM [index] WHERE 1 = 0"); });
  return failure;
}

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
