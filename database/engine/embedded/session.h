// What all objects of one open database share: the connection, the catalogue as last read, the transaction, and the
// rows that recordsets are still reading. After close() every call raises 3420.
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
  /// Reads to the end and lets go of the statement. What fails is for whoever reads the row.
  virtual void finish() noexcept = 0;
  /// Lets go of the statement at once.
  virtual void abandon() noexcept = 0;
};

/// Whoever remembers rows of a table by their identity.
class RowHolder {
 public:
  virtual ~RowHolder() = default;
  /// Rows with a higher identity were rolled back. Others may get theirs.
  virtual void lose_rows_after(std::int64_t table, std::int64_t last_row) noexcept = 0;
};

class Session {
 public:
  /// A new file, which is not created before the first change. Raises as check_place_of_new_file() does.
  static std::shared_ptr<Session> create(const std::string& host_path, const ConnectionOptions& options);
  /// 3031 where the password does not fit; one given for a plain file is not asked for. 3343 where it fits, but has
  /// more than 20 characters, or the file's pages are not of our size. 3045 where the file is in use
  /// longer than the busy time; and as check_place_of_file() and identify_database_file() raise.
  static std::shared_ptr<Session> open(const std::string& host_path, std::string_view password,
                                       const ConnectionOptions& options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void close() noexcept;
  void require_open() const;

  /// Connects a new file first.
  Connection& connection();
  /// As the file has it now. The reference lives until the next call of the session.
  const StoredCatalogue& catalogue();
  /// As this handle knew it last: of changes by other handles it learns with the next catalogue(), recordset or change.
  const StoredCatalogue& catalogue_at_hand();
  TablePointer table_at_hand(std::int64_t id);
  /// 3420 where the table is known to be gone. `known` is the catalogue that it was last seen in: as long as that is at
  /// hand, nothing is looked for.
  void require_table(std::int64_t id, std::shared_ptr<const StoredCatalogue>& known);
  /// For one change of layout, inside an AtomicChange.
  CatalogueChange change_catalogue();
  /// The table as it is now; 3420 where it was deleted.
  TablePointer table(std::int64_t id);

  void begin_transaction();
  void commit_transaction();
  void rollback_transaction();
  bool in_transaction() const noexcept { return in_transaction_; }

  /// Before each change: 3027 where the file is read-only; recordsets read what they have not read yet.
  void prepare_change();

  ProgramPointer compile(std::string_view sql) { return catalogue().compile(sql); }

  const TableStatements& statements_of(const TablePointer& table);

  /// An AutoNumber for a row that is to be added, in the open transaction or in a change of its own.
  std::int32_t take_number(const TablePointer& table);
  /// What the tables count, for a change that was begun.
  TableCounters& counters() noexcept { return counters_; }

  /// True where the path, the host's, leads to this session's file, under whatever name.
  bool is_file_at(const std::string& host_path) const;
  const std::string& host_path() const noexcept { return host_path_; }
  const ConnectionOptions& options() const noexcept { return options_; }
  const std::string& password() const noexcept { return password_; }
  /// See Database::new_password. Interrupted at any point, it leaves a file that the old or the new password opens.
  void change_password(std::string_view old_password, std::string_view new_password);
  /// See FileCare::compact. `verify` is given the path of the new file, which is closed.
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

  /// All of the process.
  static std::vector<Session*>& open_sessions();

  static bool is_too_long(std::string_view password);
  void connect_existing();
  /// Writes the file anew, see write_anew(). The connection is closed then, and on failure as it was. Raises 3045 where
  /// the file is open elsewhere.
  void rewrite(const std::function<void(Connection& reader, const std::string& path)>& fill);
  /// Raises 3343 where that is why the file could not be opened.
  void refuse_fitting_password(bool seemed_wrong);
  void connect_new();
  void disconnect() noexcept;
  void finish_reading() noexcept;
  void begin_change();
  void end_change();
  void undo_change() noexcept;
  /// Rolls SQLite's transaction back where one is open.
  void give_up_transaction() noexcept;
  /// 3043 where the open transaction is gone.
  void require_transaction() const;
  /// The catalogue was rolled back, or may have been.
  void forget_catalogue() noexcept;
  /// False for a new file as long as nothing is in it.
  bool has_catalogue() const;
  /// In a transaction: the catalogue that the file has now. The one at hand, a known one, or read from the file.
  void adopt_catalogue();

  std::string host_path_;
  std::string password_;
  ConnectionOptions options_;
  bool open_ = true;
  bool new_file_ = false;          ///< nothing is committed yet
  bool new_file_created_ = false;  ///< and yet the file is there, empty
  bool in_transaction_ = false;
  std::unique_ptr<Connection> connection_;
  std::string identity_;  ///< of the file, among the known catalogues
  std::shared_ptr<const StoredCatalogue> catalogue_;
  std::int64_t committed_stamp_ = 0;  ///< of the catalogue, when the change began
  std::vector<PendingReader*> readers_;
  int waiting_scopes_ = 0;
  std::unordered_map<std::int64_t, TableStatements> statements_;
  std::vector<RowHolder*> row_holders_;
  TableCounters counters_;
};

}  // namespace engine::embedded
