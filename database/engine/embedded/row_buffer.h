// Rows as a recordset keeps them: packed one behind the other in one block of memory, so that a long result costs
// little more than its data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/engine.h"

namespace engine::embedded {

class RowBuffer {
 public:
  std::size_t size() const noexcept { return rows_.size(); }
  /// A row is begun, then gets its values in order.
  void begin_row(std::int64_t row_id);
  void append(const Value& value);
  void append_text(std::string_view text);

  Value value(std::size_t row, std::size_t column) const;
  std::int64_t row_id(std::size_t row) const { return rows_[row].id; }
  /// The last row takes the place of an earlier one.
  void replace_by_last(std::size_t row);
  void mark_deleted(std::size_t row) { rows_[row].deleted = true; }
  bool deleted(std::size_t row) const { return rows_[row].deleted; }

 private:
  struct Row {
    std::int64_t id;
    std::size_t offset;
    bool deleted;
  };

  std::vector<Row> rows_;
  std::string bytes_;
};

}  // namespace engine::embedded
