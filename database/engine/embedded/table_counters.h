// The counters of the tables: the AutoNumbers and identities that rows got. The file keeps the last ones in the
// catalogue table "jet.counters". Therefore none is given again, whatever rows are deleted and whoever adds the next
// one.
#pragma once

#include <cstdint>
#include <functional>
#include <unordered_map>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/stored_catalogue.h"

namespace engine::embedded {

/// The counters of one handle. Every call except rolled_back() is made inside a transaction that may write.
class TableCounters {
 public:
  static void create_table(Connection& connection);
  /// Forgets the counters of all tables. They then count on from the highest number and row that exist. Call it in a
  /// transaction of its own, on a file that nobody else has open.
  static void set_back(Connection& connection);

  /// Gives the next AutoNumber. Raises 6 where none is left.
  std::int32_t next_number(Connection& connection, const StoredTable& table);
  /// Gives an identity for a row, higher than all before it.
  std::int64_t next_row(Connection& connection, const StoredTable& table);

  /// Lends the counters to a statement that adds rows by itself, and takes them back after it.
  void lend(Connection& connection, const StoredTable& table);
  void take_back(Connection& connection, const StoredTable& table);

  /// Call it before a field that may be the AutoNumber is dropped. Numbers that were given up to now are not given
  /// again.
  void keep(Connection& connection, const StoredTable& table) { counter(connection, table); }
  /// For a field that became the AutoNumber: its values count as given.
  void include_values(Connection& connection, const StoredTable& table);
  /// Call it when a table is dropped. Its counters go with it.
  void erase(Connection& connection, std::int64_t table);

  /// Writes the counters to the file. Call it at the end of a transaction, before the commit.
  void store(Connection& connection);
  /// Call it after the commit: from here on other connections may write.
  void committed() noexcept;
  /// Call it after a rollback. The file's counters are what they were; numbers that this handle gave, it does not give
  /// again. `tell` gets each table to which rows were added, with the last identity before them.
  void rolled_back(const std::function<void(std::int64_t table, std::int64_t last_row)>& tell);

 private:
  struct Counter {
    bool known = false;    ///< `stored…` are the file's counters at the beginning of the transaction
    bool in_file = false;  ///< the file has a row for this counter
    bool erased = false;
    std::int64_t stored_row = 0;
    std::int64_t stored_number = 0;
    std::int64_t row = 0;
    std::int64_t number = 0;
  };

  Counter& counter(Connection& connection, const StoredTable& table);
  void read(Connection& connection, const StoredTable& table, Counter& counter) const;

  std::unordered_map<std::int64_t, Counter> counters_;  ///< by the table's identity
  std::int64_t data_version_ = -1;
  bool checked_ = false;  ///< this transaction has checked that nobody else has written since the counters were read
};

}  // namespace engine::embedded
