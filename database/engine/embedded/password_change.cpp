// The password of a file: the whole file is written anew beside the old one and takes its place, so that at any moment
// the old password opens it or the new one.
#include <algorithm>
#include <filesystem>

#include "database/engine/embedded/file_copy.h"
#include "database/engine/embedded/session.h"
#include "database/engine/embedded/working_file.h"
#include "database/engine/engine_error.h"
#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

/// The file itself, where the path is a link to it. Another name of it would go on leading to the old file.
std::string only_name_of(const std::string& host_path) {
  const std::filesystem::path path = support::std_path(host_path);
  std::error_code failure;
  if (std::filesystem::hard_link_count(path, failure) > 1 && !failure) {
    raise(3251, "the password of a file that has a second name in a folder");
  }
  const std::filesystem::path file = std::filesystem::canonical(path, failure);
  return failure ? host_path : support::host_path_of(file);
}

}  // namespace

void Session::change_password(std::string_view old_password, std::string_view new_password) {
  require_open();
  if (is_too_long(new_password) || old_password != password_) raise(3031);
  if (in_transaction_) raise(3246);
  prepare_change();
  if (new_file_) {
    disconnect();
    password_ = new_password;
    return;
  }
  if (!connection_->hold_alone()) raise(3045);
  try {
    write_anew(new_password);
  } catch (const support::RuntimeError&) {
    disconnect();
    connect_existing();
    throw;
  }
  disconnect();
  wipe_memory(password_.data(), password_.size());
  password_ = new_password;
  connect_existing();
}

void Session::write_anew(std::string_view new_password) {
  connection_->begin_waiting();
  if (options_.exclusive) {
    connection_->run("PRAGMA locking_mode=NORMAL");
    connection_->integer("SELECT count(*) FROM sqlite_schema");
  }
  // Other programs may read, but write nothing that would be lost.
  connection_->run("BEGIN IMMEDIATE");
  WorkingFile file{only_name_of(host_path_), support::replacement_mark};
  {
    Connection reader{host_path_, {.read_only = true, .held = true, .busy_time = options_.busy_time}};
    if (!password_.empty()) {
      FileSalt salt{};
      std::ranges::copy(reader.beginning(salt.size()), salt.begin());
      reader.use_key(FileKey{password_, salt});
    }
    reader.first_read();
    copy_with_password(reader, file.path(), password_, new_password);
  }
  file.replace(connection_);
}

}  // namespace engine::embedded
