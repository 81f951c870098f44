#include "database/engine/embedded/working_file.h"

#include <filesystem>

#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/platform_file.h"
#include "database/engine/engine_error.h"
#include "support/abandoned_files.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace engine::embedded {

WorkingFile::WorkingFile(std::string target, std::string_view mark) : target_(std::move(target)) {
  support::remove_abandoned_files(target_, mark);
  const std::string path = support::working_path(target_, mark);
  check_place_of_new_file(path);
  create_private_file(path);
  path_ = path;
}

WorkingFile::~WorkingFile() {
  if (path_.empty()) return;
  for (const char* const ending : {"", "-journal"}) {
    std::error_code ignored;
    std::filesystem::remove(support::std_path(path_ + ending), ignored);
  }
}

void WorkingFile::take_name() {
  if (!support::rename_host_file(path_, target_))
    raise(support::host_file_exists(target_) ? error_number::database_exists : error_number::disk_error);
  path_.clear();
}

void WorkingFile::replace(std::unique_ptr<Connection>& held) {
  try {
    replace_held_file(held, path_, target_);
  } catch (const support::RuntimeError& error) {
    path_.clear();
    if (error.number() == error_number::file_in_use) throw;
    // The error's text says what has become of the files.
    throw support::RuntimeError(error_number::disk_error, error.what());
  }
  path_.clear();
}

}  // namespace engine::embedded
