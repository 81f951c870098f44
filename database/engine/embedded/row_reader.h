// Reads a query's rows forward into memory. A short result is read at once, so that no other handle has to wait for it;
// a long one as it is asked for, and to its end before rows change.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "database/engine/embedded/row_buffer.h"
#include "database/engine/embedded/session.h"

namespace engine::embedded {

class RowReader : public PendingReader {
 public:
  /// With `has_row_id` the statement's last column, one more than `types`, is the row's identity.
  RowReader(std::shared_ptr<Session> session, std::string_view sqlite_sql, std::vector<DataType> types,
            bool has_row_id);
  ~RowReader() override;
  RowReader(const RowReader&) = delete;
  RowReader& operator=(const RowReader&) = delete;

  /// Reads on until the row is there; false where there are fewer.
  bool reach(std::size_t row);
  void read_to_end() override;
  void abandon() noexcept override;

  /// Forgets the rows that were read; the next one is row 0 then.
  void forget_rows() noexcept { rows_.clear(); }

  RowBuffer& rows() noexcept { return rows_; }
  const RowBuffer& rows() const noexcept { return rows_; }

 private:
  /// False at the end, where the statement is let go.
  bool read_row();
  void let_go() noexcept;

  std::shared_ptr<Session> session_;
  bool has_row_id_;
  std::optional<PooledStatement> statement_;
  RowBuffer rows_;
};

}  // namespace engine::embedded
