// What a session does to its file as a whole, a change of password and a compaction: the file is written anew beside
// the old one, whose place it takes. At any moment there is the old file or the new one.
#include <algorithm>
#include <filesystem>

#include "database/engine/embedded/file_copy.h"
#include "database/engine/embedded/session.h"
#include "database/engine/embedded/table_counters.h"
#include "database/engine/embedded/working_file.h"
#include "database/engine/engine_error.h"
#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

/// The file itself, where the path is a link to it. Another name of it would go on leading to the old file.
std::string only_name_of(const std::string& host_path) {
  if (support::host_file_names(host_path) > 1) {
    raise(error_number::not_supported, "writing a file anew that has a second name in a folder");
  }
  std::error_code failure;
  const std::filesystem::path file = std::filesystem::canonical(support::std_path(host_path), failure);
  return failure ? host_path : support::host_path_of(file);
}

}  // namespace

void Session::rewrite(const std::function<void(Connection& reader, const std::string& path)>& fill) {
  if (!connection_->hold_alone()) raise(error_number::file_in_use);
  try {
    write_anew(fill);
  } catch (const support::RuntimeError&) {
    disconnect();
    connect_existing();
    throw;
  }
  disconnect();
}

void Session::write_anew(const std::function<void(Connection& reader, const std::string& path)>& fill) {
  connection_->begin_waiting();
  if (options_.exclusive) {
    connection_->run("PRAGMA locking_mode=NORMAL");
    connection_->integer("SELECT count(*) FROM sqlite_schema");
  }
  // Other programs may read, but write nothing that would be lost.
  connection_->run("BEGIN IMMEDIATE");
  WorkingFile file{only_name_of(host_path_), support::replacement_mark};
  {
    Connection reader{host_path_, {.held = true, .busy_time = options_.busy_time}};
    if (!password_.empty()) {
      FileSalt salt{};
      std::ranges::copy(reader.beginning(salt.size()), salt.begin());
      reader.use_key(FileKey{password_, salt});
    }
    reader.first_read();
    fill(reader, file.path());
  }
  file.replace(connection_);
}

void Session::compact(const std::function<void(const std::string& host_path)>& verify) {
  require_open();
  if (in_transaction_) raise(error_number::not_in_transaction);
  prepare_change();
  // Of a file that is not there yet nothing can be compacted.
  if (new_file_) return;
  rewrite([&](Connection& reader, const std::string& path) {
    copy_compacted(reader, path, password_);
    verify(path);
  });
  // What this handle gave beyond the highest number was set back with the rest.
  counters_ = {};
  connect_existing();
}

void Session::change_password(std::string_view old_password, std::string_view new_password) {
  require_open();
  if (is_too_long(new_password) || old_password != password_) raise(error_number::wrong_password);
  if (in_transaction_) raise(error_number::not_in_transaction);
  prepare_change();
  if (new_file_) {
    disconnect();
    password_ = new_password;
    return;
  }
  rewrite(
      [&](Connection& reader, const std::string& path) { copy_with_password(reader, path, password_, new_password); });
  wipe_memory(password_.data(), password_.size());
  password_ = new_password;
  connect_existing();
}

}  // namespace engine::embedded
