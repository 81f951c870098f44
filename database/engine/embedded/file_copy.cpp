#include "database/engine/embedded/file_copy.h"

#include <algorithm>
#include <optional>

#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/session_scope.h"
#include "database/engine/embedded/table_counters.h"
#include "database/engine/embedded/working_file.h"
#include "database/engine/engine_error.h"
#include "support/abandoned_files.h"

namespace engine::embedded {
namespace {

FileSalt salt_of(Connection& file) {
  FileSalt salt{};
  std::ranges::copy(file.beginning(salt.size()), salt.begin());
  return salt;
}

/// What is committed, copied under a key of the same kind: pages with a check of each have less room than those
/// without.
void copy_pages(Connection& source, const std::string& host_path, const FileKey* key) {
  Connection copy{host_path, {}};
  if (key) copy.use_key(*key);
  copy.first_read();
  // A page is needed once, here and below.
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

/// A key, where there is a password.
class OptionalKey {
 public:
  /// Of a new file.
  explicit OptionalKey(std::string_view password) {
    if (!password.empty()) key_.emplace(password, new_salt());
  }
  /// Of a file whose connection was given no key yet.
  OptionalKey(std::string_view password, Connection& file) {
    if (!password.empty()) key_.emplace(password, salt_of(file));
  }
  const FileKey* get() const { return key_ ? &*key_ : nullptr; }

 private:
  std::optional<FileKey> key_;
};

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

}  // namespace engine::embedded
