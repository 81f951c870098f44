// One connection to a database file. It owns SQLite's handle, its settings against hostile files, and the prepared
// statements that are kept for their next use. Failures raise RuntimeError with the engine's numbers.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "database/engine/embedded/file_hold.h"
#include "database/engine/embedded/file_keys.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/lru_cache.h"
#include "database/engine/value.h"

namespace engine::embedded {

/// A prepared statement. Must not outlive its connection. Parameters count from 1, columns from 0.
class PreparedStatement {
 public:
  PreparedStatement(sqlite3* connection, std::string_view sql);

  void bind(int parameter, std::int64_t value);
  void bind(int parameter, std::string_view value);
  /// Binds a value as the tables store it: Yes/No as -1 or 0, a Single as its double, a Date as its days.
  void bind(int parameter, const Value& value);
  /// Binds a stored value of another statement's row.
  void bind_column(int parameter, const PreparedStatement& row, int column);
  /// Binds all parameters, from the first.
  template <typename... Arguments>
  PreparedStatement& with(const Arguments&... arguments) {
    int parameter = 0;
    (bind_one(++parameter, arguments), ...);
    return *this;
  }

  /// True when there is a row.
  bool step();
  /// Steps to the end.
  void run();
  void reset() noexcept;

  std::int64_t integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
  double number(int column) const { return sqlite3_column_double(statement_.get(), column); }
  std::string_view text(int column) const;
  int storage_class(int column) const { return sqlite3_column_type(statement_.get(), column); }
  const char* sql() const { return sqlite3_sql(statement_.get()); }
  sqlite3_stmt* handle() const { return statement_.get(); }

 private:
  void bind_one(int parameter, std::int64_t value) { bind(parameter, value); }
  void bind_one(int parameter, std::int32_t value) { bind(parameter, std::int64_t{value}); }
  void bind_one(int parameter, bool value) { bind(parameter, std::int64_t{value}); }
  void bind_one(int parameter, std::string_view value) { bind(parameter, value); }
  void check(int result) const;

  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

class Connection;

/// A statement on loan. When the loan ends, the statement is reset and goes back to its connection.
class PooledStatement {
 public:
  PooledStatement(Connection& connection, PreparedStatement statement)
      : connection_(&connection), statement_(std::make_unique<PreparedStatement>(std::move(statement))) {}
  ~PooledStatement();
  PooledStatement(PooledStatement&&) noexcept = default;
  PooledStatement& operator=(PooledStatement&&) = delete;
  PreparedStatement& operator*() const { return *statement_; }
  PreparedStatement* operator->() const { return statement_.get(); }

 private:
  Connection* connection_;
  std::unique_ptr<PreparedStatement> statement_;
};

struct ConnectionOptions {
  bool read_only = false;
  bool exclusive = false;
  bool held = false;  ///< the file is held through another connection, which outlives this one
  std::chrono::milliseconds busy_time{5000};
};

class Connection {
 public:
  /// Opens an existing file; one of zero bytes is a new database. Raises 3051 where it cannot be opened, 3045 where
  /// another file is being put in its place. Reads nothing yet. A read-only connection changes nothing, except that it
  /// undoes the transaction of a process that died.
  Connection(const std::string& host_path, const ConnectionOptions& options);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// The statement of this text. It is prepared once and then used again, unless it is in use already.
  PooledStatement statement(std::string_view sql);
  /// Runs a statement without parameters to its end.
  void run(std::string_view sql) { statement(sql)->run(); }
  /// The first column of the first row; 0 where there is no row.
  std::int64_t integer(std::string_view sql);

  /// The file's first bytes as they are on the disk, and its size. Call it only before the key is given.
  std::string beginning(std::size_t size);
  std::int64_t file_size();
  void use_key(const FileKey& key);
  /// Reads the file for the first time and completes the settings. Call the functions below only after this. Returns
  /// the file's user version; nothing where the file is no database or the key does not fit.
  std::optional<std::int64_t> first_read();
  /// Re-encrypts the whole file; a null key leaves it plain. If it is interrupted, no key opens the file any more: use
  /// it only for a file that nobody needs yet.
  void change_key(const FileKey* key);
  /// From now on nobody else can open the file. Returns false and changes nothing where somebody has it open.
  bool hold_alone() { return hold_.hold_alone(); }
  void let_others_in() noexcept { hold_.let_others_in(); }
  /// Fills another connection's file, which is new and empty, with this one's bytes as they are on the disk, and syncs
  /// it. A transaction of another connection must keep others from changing the bytes. Neither connection was given a
  /// key. Raises what SQLite's errors become (3043 where the disk fails or is full); the target may then hold a part.
  void copy_bytes_to(Connection& target);
  /// False where another tool has set the file so that committed data may lie in a second file.
  bool is_all_in_one_file();
  /// Fills another connection's file, which is new and empty, with what is committed in this one's.
  void copy_to(Connection& target);
  /// Raises 3343 where the file is inconsistent.
  void check_integrity();
  /// Call it in a transaction. False where the page, counted from 1, cannot be read or, in an encrypted file, is not
  /// the page that was written there. `size` is the size of the file's pages.
  bool is_page_sound(std::int64_t page, std::int64_t size);

  /// From now on, all waits for the file's locks together take at most the busy time.
  void begin_waiting() noexcept { waited_ = {}; }
  /// For times when much is written: changes go to the disk early, not all of them at the commit.
  void use_small_cache() noexcept { set_cache("PRAGMA cache_size=-2048"); }
  /// For all other times: what was read is kept.
  void use_large_cache() noexcept { set_cache("PRAGMA cache_size=-131072"); }

  bool in_transaction() const { return sqlite3_get_autocommit(handle_.get()) == 0; }
  bool read_only() const { return read_only_ || sqlite3_db_readonly(handle_.get(), "main") == 1; }
  std::int32_t changes() const { return sqlite3_changes(handle_.get()); }
  std::int64_t last_row_id() const { return sqlite3_last_insert_rowid(handle_.get()); }
  /// The counters of the statements that add rows.
  jet_sql::Numbering& numbering() noexcept { return *numbering_; }

 private:
  friend class PooledStatement;
  /// SQLite calls it as long as the file is in use elsewhere. It returns 0 to give up.
  static int wait_for_file(void* connection, int times_called);
  void secure();
  void set_cache(const char* setting) noexcept;
  sqlite3_file* file();
  void check(int result) const;

  struct Close {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
  };
  // Released when the handle is closed.
  FileHold hold_;
  std::unique_ptr<sqlite3, Close> handle_;
  std::string host_path_;
  jet_sql::Numbering* numbering_ = nullptr;  ///< lives with the handle
  std::chrono::milliseconds busy_time_;
  std::chrono::steady_clock::duration waited_{};
  bool exclusive_;
  bool read_only_;
  LruCache<PreparedStatement> idle_{128};
};

}  // namespace engine::embedded
