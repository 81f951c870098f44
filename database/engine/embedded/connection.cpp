#include "database/engine/embedded/connection.h"

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/embedded/page_memory.h"
#include "database/engine/embedded/platform_file.h"
#include "database/engine/embedded/share_patience.h"
#include "database/engine/engine_error.h"
#include "support/yield_to_input.h"

namespace engine::embedded {
namespace {

constexpr int maximum_text_bytes = 64 << 20;
/// Where SQLite keeps the locks of a file.
constexpr std::int64_t pending_byte = 0x40000000;
constexpr std::int64_t lock_bytes = 512;
/// As long as the longest statement that the compiler writes.
constexpr int maximum_sql_bytes = 4 << 20;

/// Decrypting a page costs more than everything else that is done with it. Therefore up to 128 MiB of pages are kept,
/// so that several queries over ten years of data decrypt each page once. A small file takes little.
/// The cache size is set in the transaction that reads the version, because each transaction begins with reading the
/// first page, whatever is kept. A commit ends when its journal is deleted; with synchronous=EXTRA the folder is synced
/// as well, so that the journal does not come back after a power cut and undo the commit. SQLite takes that setting
/// outside of transactions only.
constexpr char first_statements[] =
    "BEGIN; PRAGMA cell_size_check=ON; PRAGMA user_version; PRAGMA cache_size=-131072; COMMIT; "
    "PRAGMA synchronous=EXTRA";

/// A derived key in the text form that the cipher takes; wiped after use.
class KeyText {
 public:
  explicit KeyText(const FileKey& key) : text_("x'") {
    text_.reserve(2 * (key.key().size() + key.salt().size()) + 3);
    for (const unsigned char byte : key.key()) append(byte);
    for (const unsigned char byte : key.salt()) append(byte);
    text_ += '\'';
  }
  ~KeyText() { wipe_memory(text_.data(), text_.size()); }
  KeyText(const KeyText&) = delete;
  KeyText& operator=(const KeyText&) = delete;
  const char* data() const { return text_.data(); }
  int size() const { return static_cast<int>(text_.size()); }

 private:
  void append(unsigned char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    text_ += digits[byte >> 4];
    text_ += digits[byte & 15];
  }
  std::string text_;
};

/// Makes SQLite overwrite freed memory, in the whole process.
void secure_memory(sqlite3* handle) {
  static bool done = false;
  if (!std::exchange(done, true)) sqlite3_exec(handle, "PRAGMA memory_security=fill", nullptr, nullptr, nullptr);
}

void choose_cipher(sqlite3* handle) {
  sqlite3mc_config(handle, "cipher", sqlite3mc_cipher_index("sqlcipher"));
  sqlite3mc_config_cipher(handle, "sqlcipher", "legacy", 4);
}

using DeleteCall = int (*)(sqlite3_vfs* vfs, const char* path, int sync_folder);

DeleteCall& plain_delete() {
  static DeleteCall call = nullptr;
  return call;
}

/// An empty journal undoes nothing. Should its name come back after a power cut, no harm is done.
int delete_for_good(sqlite3_vfs* vfs, const char* path, int sync_folder) {
  if (sync_folder != 0) empty_file_for_good(path);
  return plain_delete()(vfs, path, sync_folder);
}

/// From now on, in the whole process, a journal that SQLite deletes together with a sync of its folder stays deleted
/// after a power cut. Windows syncs no folder: there the journal is emptied, and the emptying synced, before the
/// journal is deleted. Calling it again does nothing.
void sync_ends_of_journals() noexcept {
  if (plain_delete() != nullptr) return;
  sqlite3_initialize();
  sqlite3_vfs* const vfs = sqlite3_vfs_find("win32");
  if (vfs == nullptr) return;
  plain_delete() = vfs->xDelete;
  vfs->xDelete = delete_for_good;
}

}  // namespace

PreparedStatement::PreparedStatement(sqlite3* connection, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  const int result = sqlite3_prepare_v3(connection, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                        &statement, nullptr);
  statement_.reset(statement);
  if (result != SQLITE_OK) throw jet_sql::error_of(connection, result);
}

void PreparedStatement::check(int result) const {
  if (result != SQLITE_OK) throw jet_sql::error_of(sqlite3_db_handle(statement_.get()), result);
}

void PreparedStatement::bind(int parameter, std::int64_t value) {
  check(sqlite3_bind_int64(statement_.get(), parameter, value));
}

void PreparedStatement::bind(int parameter, std::string_view value) {
  // A null pointer would bind Null instead of an empty text.
  const char* text = value.data() ? value.data() : "";
  check(sqlite3_bind_text64(statement_.get(), parameter, text, value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void PreparedStatement::bind(int parameter, const Value& value) {
  std::visit(
      [&](const auto& content) {
        using Content = std::decay_t<decltype(content)>;
        if constexpr (std::is_same_v<Content, Null>) {
          check(sqlite3_bind_null(statement_.get(), parameter));
        } else if constexpr (std::is_same_v<Content, bool>) {
          bind(parameter, std::int64_t{content ? -1 : 0});
        } else if constexpr (std::is_same_v<Content, std::int32_t>) {
          bind(parameter, std::int64_t{content});
        } else if constexpr (std::is_same_v<Content, std::string>) {
          bind(parameter, std::string_view(content));
        } else if constexpr (std::is_same_v<Content, Date>) {
          check(sqlite3_bind_double(statement_.get(), parameter, content.days));
        } else {
          check(sqlite3_bind_double(statement_.get(), parameter, static_cast<double>(content)));
        }
      },
      value);
}

void PreparedStatement::bind_column(int parameter, const PreparedStatement& row, int column) {
  check(sqlite3_bind_value(statement_.get(), parameter, sqlite3_column_value(row.statement_.get(), column)));
}

bool PreparedStatement::step() {
  const int result = sqlite3_step(statement_.get());
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  const support::RuntimeError error = jet_sql::error_of(sqlite3_db_handle(statement_.get()), result);
  sqlite3_reset(statement_.get());
  throw error;
}

void PreparedStatement::run() {
  while (step()) {
  }
  sqlite3_reset(statement_.get());
}

void PreparedStatement::reset() noexcept {
  sqlite3_reset(statement_.get());
  sqlite3_clear_bindings(statement_.get());
}

std::string_view PreparedStatement::text(int column) const {
  const unsigned char* text = sqlite3_column_text(statement_.get(), column);
  if (!text) return {};
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

PooledStatement::~PooledStatement() {
  if (!statement_) return;
  statement_->reset();
  const char* sql = statement_->sql();
  connection_->idle_.put(sql, std::move(*statement_));
}

Connection::Connection(const std::string& host_path, const ConnectionOptions& options)
    : hold_(options.held ? FileHold() : FileHold(host_path, options.busy_time)),
      host_path_(host_path),
      busy_time_(options.busy_time),
      exclusive_(options.exclusive),
      read_only_(options.read_only) {
  keep_pages_together();
  sync_ends_of_journals();
  if (!options.held) wait_until_journal_is_seen(host_path);
  sqlite3* handle = nullptr;
  // Opens for writing, if the file allows it, even where the caller only reads: what a process left half done when it
  // died is undone by the next one that opens the file, and that may be a reader.
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE;
  const int result = sqlite3_open_v2(host_path.c_str(), &handle, flags, nullptr);
  handle_.reset(handle);
  if (result != SQLITE_OK) raise(error_number::file_not_opened);
  sqlite3_busy_handler(handle, wait_for_file, this);
  secure();
}

Connection::~Connection() {
  if (sqlite3_total_changes64(handle_.get()) > 0) note_own_change(host_path_);
}

// SQLite's own handler ends up asking only every tenth of a second, so that one of several processes may never ask at
// the right moment. Short waits of uneven length give each process its turn. One statement may ask for many locks: one
// at its end, and one whenever its changes outgrow their memory.
int Connection::wait_for_file(void* connection, int) {
  Connection& self = *static_cast<Connection*>(connection);
  if (self.waited_ >= self.busy_time_) return 0;
  const auto began = std::chrono::steady_clock::now();
  unsigned char uneven = 0;
  sqlite3_randomness(1, &uneven);
  std::this_thread::sleep_for(std::chrono::microseconds(500 + 16 * uneven));
  support::stay_responding();
  self.waited_ += std::chrono::steady_clock::now() - began;
  return 1;
}

// Runs no prepared statement of the pool, because the setting is made while the statement is prepared. If it cannot be
// made, SQLite uses more or less memory.
void Connection::set_cache(const char* setting) noexcept {
  sqlite3_exec(handle_.get(), setting, nullptr, nullptr, nullptr);
}

sqlite3_file* Connection::file() {
  sqlite3_file* file = nullptr;
  check(sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file));
  return file;
}

std::string Connection::beginning(std::size_t size) {
  const std::int64_t wanted = std::min(file_size(), static_cast<std::int64_t>(size));
  std::string bytes(static_cast<std::size_t>(wanted), '\0');
  if (wanted > 0 && file()->pMethods->xRead(file(), bytes.data(), static_cast<int>(wanted), 0) != SQLITE_OK) {
    raise(error_number::disk_error);
  }
  return bytes;
}

std::int64_t Connection::file_size() {
  sqlite3_int64 size = 0;
  if (file()->pMethods->xFileSize(file(), &size) != SQLITE_OK) raise(error_number::disk_error);
  return size;
}

void Connection::use_key(const FileKey& key) {
  choose_cipher(handle_.get());
  const KeyText text{key};
  check(sqlite3_key(handle_.get(), text.data(), text.size()));
}

void Connection::secure() {
  sqlite3* handle = handle_.get();
  struct Setting {
    int option;
    int value;
  };
  // The file may come from a stranger: its schema may run nothing beyond tables and indexes.
  for (const Setting setting : {Setting{SQLITE_DBCONFIG_DEFENSIVE, 1}, Setting{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                Setting{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, Setting{SQLITE_DBCONFIG_ENABLE_VIEW, 0},
                                Setting{SQLITE_DBCONFIG_DQS_DDL, 0}, Setting{SQLITE_DBCONFIG_DQS_DML, 0}}) {
    check(sqlite3_db_config(handle, setting.option, setting.value, nullptr));
  }
  sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, maximum_text_bytes);
  sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, maximum_sql_bytes);
  secure_memory(handle);
  numbering_ = &jet_sql::register_functions(handle);
}

void Connection::check(int result) const {
  if (result != SQLITE_OK) throw jet_sql::error_of(handle_.get(), result);
}

std::optional<std::int64_t> Connection::first_read() {
  std::int64_t user_version = 0;
  const auto take = [](void* target, int, char** values, char**) {
    *static_cast<std::int64_t*>(target) = values[0] ? std::atoll(values[0]) : 0;
    return 0;
  };
  const int result = sqlite3_exec(handle_.get(), first_statements, take, &user_version, nullptr);
  if ((result & 0xff) == SQLITE_NOTADB) return std::nullopt;
  check(result);
  if (exclusive_) run("PRAGMA locking_mode=EXCLUSIVE");
  if (read_only_) run("PRAGMA query_only=ON");
  return user_version;
}

PooledStatement Connection::statement(std::string_view sql) {
  if (std::optional<PreparedStatement> idle = idle_.take(sql)) return PooledStatement(*this, std::move(*idle));
  return PooledStatement(*this, PreparedStatement(handle_.get(), sql));
}

std::int64_t Connection::integer(std::string_view sql) {
  PooledStatement query = statement(sql);
  return query->step() ? query->integer(0) : 0;
}

void Connection::change_key(const FileKey* key) {
  idle_.clear();
  choose_cipher(handle_.get());
  if (!key) {
    check(sqlite3_rekey(handle_.get(), "", 0));
    return;
  }
  const KeyText text{*key};
  check(sqlite3_rekey(handle_.get(), text.data(), text.size()));
}

bool Connection::is_all_in_one_file() {
  const PooledStatement mode = statement("PRAGMA journal_mode");
  return mode->step() && mode->text(0) != "wal";
}

void Connection::copy_bytes_to(Connection& target) {
  sqlite3_file* const from = file();
  sqlite3_file* const to = target.file();
  const std::int64_t size = file_size();
  std::vector<char> chunk(std::size_t{64} << 10);
  static_assert(pending_byte % (64 << 10) == 0);
  for (std::int64_t position = 0; position < size;) {
    // The page of these bytes stores nothing, and on Windows locked bytes cannot be read.
    if (position == pending_byte) position += lock_bytes;
    const int part = static_cast<int>(std::min<std::int64_t>(size - position, std::ssize(chunk)));
    target.check(from->pMethods->xRead(from, chunk.data(), part, position));
    target.check(to->pMethods->xWrite(to, chunk.data(), part, position));
    position += part;
  }
  target.check(to->pMethods->xSync(to, SQLITE_SYNC_FULL));
}

void Connection::copy_to(Connection& target) {
  sqlite3_backup* backup = sqlite3_backup_init(target.handle_.get(), "main", handle_.get(), "main");
  if (!backup) throw jet_sql::error_of(target.handle_.get(), sqlite3_errcode(target.handle_.get()));
  const int copied = sqlite3_backup_step(backup, -1);
  const int finished = sqlite3_backup_finish(backup);
  if (copied != SQLITE_DONE) throw jet_sql::error_of(target.handle_.get(), finished != SQLITE_OK ? finished : copied);
}

bool Connection::is_page_sound(std::int64_t page, std::int64_t size) {
  // The page in which the system's locks lie is never written.
  if (page == pending_byte / size + 1) return true;
  std::string bytes(static_cast<std::size_t>(size), '\0');
  return file()->pMethods->xRead(file(), bytes.data(), static_cast<int>(size), (page - 1) * size) == SQLITE_OK;
}

void Connection::check_integrity() {
  const PooledStatement report = statement("PRAGMA integrity_check(1)");
  if (!report->step() || report->text(0) != "ok") raise(error_number::unknown_format);
}

}  // namespace engine::embedded
