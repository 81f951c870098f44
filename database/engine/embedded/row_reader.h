// Reads the rows of a query forward into memory. A short result is read at once, so that no other handle has to wait
// for it. A long one is read as it is asked for, and to its end before rows change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "database/engine/embedded/row_buffer.h"
#include "database/engine/embedded/session.h"
#include "support/error.h"

namespace engine::embedded {

class RowReader : public PendingReader, public RowHolder {
 public:
  /// If `table` is not 0, it is the identity of the table to which the rows belong. The statement's last column, behind
  /// those of `types`, then is the row's identity.
  RowReader(std::shared_ptr<Session> session, std::string_view sqlite_sql, std::vector<DataType> types,
            std::int64_t table);
  ~RowReader() override;
  RowReader(const RowReader&) = delete;
  RowReader& operator=(const RowReader&) = delete;

  /// Reads on until the row is there. False where there are fewer rows. Raises the error of a row that fails, each time
  /// anew.
  bool reach(std::size_t row);
  /// Raises the error of a row that fails.
  void read_to_end();
  /// True where no more rows come.
  bool at_end() const noexcept { return !statement_ && !failure_; }
  void finish() noexcept override;
  void abandon() noexcept override;
  void lose_rows_after(std::int64_t table, std::int64_t last_row) noexcept override;
  /// Releases the statement and all rows.
  void close() noexcept;

  /// Forgets the rows that were read; the next one then is row 0.
  void forget_rows() noexcept { rows_.clear(); }

  RowBuffer& rows() noexcept { return rows_; }
  const RowBuffer& rows() const noexcept { return rows_; }

 private:
  /// False at the end and where the row fails. The statement is then released.
  bool read_row() noexcept;
  void let_go() noexcept;

  std::shared_ptr<Session> session_;
  std::int64_t table_;
  std::optional<PooledStatement> statement_;
  std::optional<support::RuntimeError> failure_;  ///< the error of the row behind the last one
  RowBuffer rows_;
};

}  // namespace engine::embedded
