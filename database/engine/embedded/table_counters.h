// What tables count: the AutoNumbers and the identities that rows got. The last ones stand in the file, in the
// catalogue table "jet.counters", so that none is given again, whatever rows are deleted and whoever adds the next one.
#pragma once

#include <cstdint>
#include <functional>
#include <unordered_map>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/stored_catalogue.h"

namespace engine::embedded {

/// Of one handle. Every call but rolled_back() is made inside a transaction that may write.
class TableCounters {
 public:
  static void create_table(Connection& connection);
  /// Of all tables, as of such that did not count yet: they go on from the highest number and row that are there. In a
  /// transaction of its own, on a file that nobody else has open.
  static void set_back(Connection& connection);

  /// The next AutoNumber: 6 where there is none left.
  std::int32_t next_number(Connection& connection, const StoredTable& table);
  /// An identity for a row, higher than all before it.
  std::int64_t next_row(Connection& connection, const StoredTable& table);

  /// Hands the counters to a statement that adds rows by itself, and takes them back after it.
  void lend(Connection& connection, const StoredTable& table);
  void take_back(Connection& connection, const StoredTable& table);

  /// Before a field that may be the AutoNumber goes: what was given up to now is not given again.
  void keep(Connection& connection, const StoredTable& table) { counter(connection, table); }
  /// A field became the AutoNumber: its values count as given.
  void include_values(Connection& connection, const StoredTable& table);
  /// The table is gone, and its counters with it.
  void erase(Connection& connection, std::int64_t table);

  /// At the transaction's end: to the file, before it is committed.
  void store(Connection& connection);
  /// After it was committed: other connections may write from here on.
  void committed() noexcept;
  /// The file's counters are what they were; what this handle gave, it does not give again. Tells of each table that
  /// rows were added to which identity was the last before them.
  void rolled_back(const std::function<void(std::int64_t table, std::int64_t last_row)>& tell);

 private:
  struct Counter {
    bool known = false;    ///< `stored…` are what the file had when the transaction began
    bool in_file = false;  ///< there is a row of it
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
  bool checked_ = false;  ///< in this transaction: nobody else has written since the counters were read
};

}  // namespace engine::embedded
