// Rows as a recordset keeps them: packed one behind the other in blocks of memory, as they are stored. A value is made
// of what is stored when it is asked for, so that a long result costs little more than its data.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/connection.h"
#include "database/engine/engine.h"

namespace engine::embedded {

/// The identity of no row.
inline constexpr std::int64_t no_row = 0;

class RowBuffer {
 public:
  /// Types of the columns, as they read.
  explicit RowBuffer(std::vector<DataType> types) : types_(std::move(types)) {}

  std::size_t size() const noexcept { return rows_.size(); }
  /// The statement's row; with `has_row_id` its last column, one more than there are types, is the row's identity.
  void append(const PreparedStatement& row, bool has_row_id);
  void append(std::int64_t row_id, const std::vector<Value>& values);

  /// Forgets all rows; the next one appended is row 0.
  void clear() noexcept;

  Value value(std::size_t row, std::size_t column) const;
  std::int64_t row_id(std::size_t row) const { return rows_[row].id; }
  /// The last row takes the place of an earlier one.
  void replace_by_last(std::size_t row);
  /// Rows with a higher identity have none from here on, so that no change meets another row under it.
  void lose_identities_after(std::int64_t last) noexcept;
  void mark_deleted(std::size_t row) { rows_[row].deleted = true; }
  bool deleted(std::size_t row) const { return rows_[row].deleted; }

 private:
  struct Row {
    std::int64_t id;
    const char* values;
    bool deleted;
  };

  /// Where a value of a row begins.
  struct Place {
    const char* values = nullptr;
    std::size_t column = 0;
    const char* position = nullptr;
  };

  void append_column(const PreparedStatement& row, int column);
  void append_value(const Value& value);
  void append_null();
  void append_number(double number);
  void append_text(std::string_view text);
  /// Moves the row that was packed to its place.
  void end_row(std::int64_t row_id);

  std::vector<DataType> types_;
  std::deque<Row> rows_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t last_block_size_ = 0;
  std::size_t room_ = 0;   ///< bytes that are free at the end of the last block
  char* end_ = nullptr;    ///< where they begin
  mutable Place reached_;  ///< the value that was asked for last: the next one mostly lies behind it
  std::string packed_;     ///< the row that is being appended
};

}  // namespace engine::embedded
