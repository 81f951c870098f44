#include "database/engine/embedded/journal_end.h"

#include <sqlite3.h>

namespace engine::embedded {
namespace {

using DeleteCall = int (*)(sqlite3_vfs* vfs, const char* path, int sync_folder);

DeleteCall& plain_delete() {
  static DeleteCall call = nullptr;
  return call;
}

/// An empty journal is none: should its name come back, nothing is undone.
int delete_for_good(sqlite3_vfs* vfs, const char* path, int sync_folder) {
  if (sync_folder != 0) empty_file_for_good(path);
  return plain_delete()(vfs, path, sync_folder);
}

}  // namespace

void sync_ends_of_journals() noexcept {
  if (plain_delete() != nullptr) return;
  sqlite3_initialize();
  sqlite3_vfs* const vfs = sqlite3_vfs_find("win32");
  if (vfs == nullptr) return;
  plain_delete() = vfs->xDelete;
  vfs->xDelete = delete_for_good;
}

}  // namespace engine::embedded
