// What all objects of one open database share: the connection, the catalogue as it was read last, the transaction, and
// the recordsets that are still reading. After close() every call raises 3420.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/engine/embedded/catalogue_change.h"
#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/stored_catalogue.h"
#include "database/engine/embedded/table_counters.h"

namespace engine::embedded {

/// A statement that is still being read.
class PendingReader {
 public:
  virtual ~PendingReader() = default;
  /// Reads to the end and releases the statement. Errors are kept for the caller that reads the row.
  virtual void finish() noexcept = 0;
  /// Releases the statement at once.
  virtual void abandon() noexcept = 0;
};

/// An object that remembers rows of a table by their identity.
class RowHolder {
 public:
  virtual ~RowHolder() = default;
  /// Rows with a higher identity were rolled back. Other rows may get these identities.
  virtual void lose_rows_after(std::int64_t table, std::int64_t last_row) noexcept = 0;
};

class Session {
 public:
  /// For a new file, which is not created before the first change. Raises what check_place_of_new_file() raises.
  static std::shared_ptr<Session> create(const std::string& host_path, const ConnectionOptions& options);
  /// Raises 3031 where the password does not fit; a password that is given for a plain file does not count. Raises 3343
  /// where the password fits but has more than 20 characters, or where the file's pages do not have our size. Raises
  /// 3045 where the file is in use longer than the busy time, and what check_place_of_file() and
  /// identify_database_file() raise.
  static std::shared_ptr<Session> open(const std::string& host_path, std::string_view password,
                                       const ConnectionOptions& options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void close() noexcept;
  void require_open() const;

  /// Connects first where the file is new.
  Connection& connection();
  /// The catalogue that the file has now. The reference lives until the next call of the session.
  const StoredCatalogue& catalogue();
  /// The catalogue as this handle knew it last. It learns of changes by other handles with the next catalogue(),
  /// recordset or change.
  const StoredCatalogue& catalogue_at_hand();
  TablePointer table_at_hand(std::int64_t id);
  /// Raises 3420 where the table is known to be gone. `known` is the catalogue in which the table was seen last; while
  /// that one is at hand, there is nothing to look up.
  void require_table(std::int64_t id, std::shared_ptr<const StoredCatalogue>& known);
  /// For one change of the layout, inside an AtomicChange.
  CatalogueChange change_catalogue();
  /// The table as it is now. Raises 3420 where it was deleted.
  TablePointer table(std::int64_t id);

  void begin_transaction();
  void commit_transaction();
  void rollback_transaction();
  bool in_transaction() const noexcept { return in_transaction_; }

  /// Call it before each change. Raises 3027 where the file is read-only. Recordsets read the rows that they have not
  /// read yet.
  void prepare_change();

  ProgramPointer compile(std::string_view sql) { return catalogue().compile(sql); }

  const TableStatements& statements_of(const TablePointer& table);

  /// Gives an AutoNumber for a row that will be added, in the open transaction or in a change of its own.
  std::int32_t take_number(const TablePointer& table);
  /// The counters of the tables, for a change that has begun.
  TableCounters& counters() noexcept { return counters_; }

  /// True where `host_path` leads to this session's file, under whatever name.
  bool is_file_at(const std::string& host_path) const;
  const std::string& host_path() const noexcept { return host_path_; }
  const ConnectionOptions& options() const noexcept { return options_; }
  const std::string& password() const noexcept { return password_; }
  /// See Database::new_password. If it is interrupted at any point, the old or the new password opens the file.
  void change_password(std::string_view old_password, std::string_view new_password);
  /// See FileCare::compact. `verify` gets the path of the new file, which is closed.
  void compact(const std::function<void(const std::string& host_path)>& verify);

  void add_reader(PendingReader& reader) { readers_.push_back(&reader); }
  void remove_reader(PendingReader& reader) noexcept;
  void add_row_holder(RowHolder& holder) { row_holders_.push_back(&holder); }
  void remove_row_holder(RowHolder& holder) noexcept;

 private:
  friend class AtomicChange;
  friend class ReadScope;
  friend class WaitingScope;
  Session(std::string host_path, std::string_view password, const ConnectionOptions& options);

  /// All sessions of the process.
  static std::vector<Session*>& open_sessions();

  static bool is_too_long(std::string_view password);
  void connect_existing();
  /// Writes the file anew, see write_anew(). The connection is closed afterwards; on failure it is as it was. Raises
  /// 3045 where the file is open elsewhere.
  void rewrite(const std::function<void(Connection& reader, const std::string& path)>& fill);
  /// Raises 3343 where that is the reason why the file could not be opened.
  void refuse_fitting_password(bool seemed_wrong);
  void connect_new();
  void disconnect() noexcept;
  void finish_reading() noexcept;
  void begin_change();
  void end_change();
  void undo_change() noexcept;
  /// Rolls SQLite's transaction back if one is open.
  void give_up_transaction() noexcept;
  /// Raises 3043 where the open transaction is gone.
  void require_transaction() const;
  /// Call it when the catalogue was rolled back, or may have been.
  void forget_catalogue() noexcept;
  /// False for a new file as long as it is empty.
  bool has_catalogue() const;
  /// Call it in a transaction. Takes the catalogue that the file has now: the one at hand, a known one, or a new
  /// reading.
  void adopt_catalogue();

  std::string host_path_;
  std::string password_;
  ConnectionOptions options_;
  bool open_ = true;
  bool new_file_ = false;          ///< nothing is committed yet
  bool new_file_created_ = false;  ///< nothing is committed yet, but the empty file exists
  bool in_transaction_ = false;
  std::unique_ptr<Connection> connection_;
  std::string identity_;  ///< identity of the file among the known catalogues
  std::shared_ptr<const StoredCatalogue> catalogue_;
  std::int64_t committed_stamp_ = 0;  ///< stamp of the catalogue when the change began
  std::vector<PendingReader*> readers_;
  int waiting_scopes_ = 0;
  std::unordered_map<std::int64_t, TableStatements> statements_;
  std::vector<RowHolder*> row_holders_;
  TableCounters counters_;
};

}  // namespace engine::embedded
