// The AutoNumbers that a connection gives to new rows: a table's highest is looked up once and counted on, until
// another connection changes rows.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/stored_catalogue.h"

namespace engine::embedded {

/// Precondition of every call: the table has an AutoNumber.
class AutoNumbers {
 public:
  /// 6 where the highest number is taken.
  std::int32_t next(Connection& connection, const StoredTable& table);
  /// The same number, or the next one where another connection has used it since.
  std::int32_t confirm(Connection& connection, const StoredTable& table, std::int32_t number);
  /// Numbers are to be looked up again.
  void forget() noexcept { last_.clear(); }

 private:
  /// False where another connection has changed rows since the last call.
  bool are_current(Connection& connection);

  std::unordered_map<std::int64_t, std::int64_t> last_;  ///< by the table's identity
  std::int64_t data_version_ = -1;
};

}  // namespace engine::embedded
