#include "database/engine/embedded/file_copy.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/session_scope.h"
#include "database/engine/embedded/table_counters.h"
#include "database/engine/embedded/working_file.h"
#include "database/engine/engine_error.h"
#include "support/abandoned_files.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

FileSalt salt_of(Connection& file) {
  FileSalt salt{};
  std::ranges::copy(file.beginning(salt.size()), salt.begin());
  return salt;
}

/// Copies what is committed, under a key of the same kind. The kind must be the same because a page with a checksum has
/// less room for data than one without.
void copy_pages(Connection& source, const std::string& host_path, const FileKey* key) {
  Connection copy{host_path, {}};
  if (key) copy.use_key(*key);
  copy.first_read();
  // Each page is needed only once, here and below.
  copy.use_small_cache();
  source.copy_to(copy);
}

void check_file(const std::string& host_path, const FileKey* key) {
  Connection copy{host_path, {}};
  if (key) copy.use_key(*key);
  if (!copy.first_read()) raise(error_number::unknown_format);
  copy.use_small_cache();
  copy.check_integrity();
}

/// A key where there is a password, else none.
class OptionalKey {
 public:
  /// The key of a new file.
  explicit OptionalKey(std::string_view password) {
    if (!password.empty()) key_.emplace(password, new_salt());
  }
  /// The key of an existing file. Its connection was given no key yet.
  OptionalKey(std::string_view password, Connection& file) {
    if (!password.empty()) key_.emplace(password, salt_of(file));
  }
  const FileKey* get() const { return key_ ? &*key_ : nullptr; }

 private:
  std::optional<FileKey> key_;
};

/// The path of the file itself, where the given path is a link to it. A second name of the file would go on leading to
/// the old file, so it is refused.
std::string only_name_of(const std::string& host_path) {
  if (support::host_file_names(host_path) > 1) {
    raise(error_number::not_supported, "writing a file anew that has a second name in a folder");
  }
  std::error_code failure;
  const std::filesystem::path file = std::filesystem::canonical(support::std_path(host_path), failure);
  return failure ? host_path : support::host_path_of(file);
}

}  // namespace

void copy_with_password(Connection& source, const std::string& host_path, std::string_view password,
                        std::string_view new_password) {
  const bool same_kind = password.empty() == new_password.empty();
  const OptionalKey key{new_password};
  if (same_kind) {
    copy_pages(source, host_path, key.get());
  } else {
    const OptionalKey old_key{password};
    copy_pages(source, host_path, old_key.get());
    Connection copy{host_path, {}};
    if (old_key.get()) copy.use_key(*old_key.get());
    copy.first_read();
    copy.change_key(key.get());
  }
  check_file(host_path, key.get());
  if (key.get()) key.get()->remember(new_password);
}

void copy_compacted(Connection& source, const std::string& host_path, std::string_view password) {
  source.statement("VACUUM INTO ?")->with(std::string_view(host_path)).run();
  Connection copy{host_path, {}};
  const OptionalKey key{password, copy};
  if (key.get()) copy.use_key(*key.get());
  if (!copy.first_read()) raise(error_number::unknown_format);
  TableCounters::set_back(copy);
  copy.check_integrity();
  if (key.get()) key.get()->remember(password);
}

void save_copy(Session& session, const std::string& host_path) {
  if (session.in_transaction() && !session.options().read_only) raise(error_number::not_in_transaction);
  Connection& source = session.connection();
  check_place_of_new_file(host_path);
  WorkingFile file{host_path, support::new_database_mark};
  {
    session.catalogue();
    const ReadScope nobody_writes{session};
    source.integer("SELECT count(*) FROM sqlite_schema");
    Connection bytes{session.host_path(), {.held = true}};
    const OptionalKey key{session.password(), bytes};
    if (source.is_all_in_one_file()) {
      Connection copy{file.path(), {}};
      bytes.copy_bytes_to(copy);
    } else {
      copy_pages(source, file.path(), key.get());
    }
    check_file(file.path(), key.get());
  }
  file.take_name();
}

void write_anew(std::unique_ptr<Connection>& held, const std::string& host_path, std::string_view password,
                const ConnectionOptions& options, const FillFile& fill) {
  held->begin_waiting();
  if (options.exclusive) {
    held->run("PRAGMA locking_mode=NORMAL");
    held->integer("SELECT count(*) FROM sqlite_schema");
  }
  // Other programs may read meanwhile. They must not write, because their changes would be lost.
  held->run("BEGIN IMMEDIATE");
  WorkingFile file{only_name_of(host_path), support::replacement_mark};
  {
    Connection reader{host_path, {.held = true, .busy_time = options.busy_time}};
    if (!password.empty()) reader.use_key(FileKey{password, salt_of(reader)});
    reader.first_read();
    fill(reader, file.path());
  }
  file.replace(held);
}

}  // namespace engine::embedded
