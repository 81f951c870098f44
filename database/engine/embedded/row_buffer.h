// The rows that a recordset keeps. They are packed one behind the other in blocks of memory, in the form in which they
// are stored. A value is converted only when it is asked for, so a long result costs little more than its data.
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
  /// `types`: how the values of each column are read.
  explicit RowBuffer(std::vector<DataType> types) : types_(std::move(types)) {}

  std::size_t size() const noexcept { return rows_.size(); }
  /// Appends the statement's row. With `has_row_id`, its last column, behind those that have types, is the row's
  /// identity.
  void append(const PreparedStatement& row, bool has_row_id);
  void append(std::int64_t row_id, const std::vector<Value>& values);

  /// Forgets all rows. The next row that is appended is row 0.
  void clear() noexcept;

  Value value(std::size_t row, std::size_t column) const;
  std::int64_t row_id(std::size_t row) const { return rows_[row].id; }
  /// Puts the last row in the place of an earlier one.
  void replace_by_last(std::size_t row);
  /// Takes the identity from rows with a higher one, so that no change reaches another row under it.
  void lose_identities_after(std::int64_t last) noexcept;
  void mark_deleted(std::size_t row) { rows_[row].deleted = true; }
  bool deleted(std::size_t row) const { return rows_[row].deleted; }

 private:
  struct Row {
    std::int64_t id;
    const char* values;
    bool deleted;
  };

  /// The place at which a value of a row begins.
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
  /// Moves the packed row to its place.
  void end_row(std::int64_t row_id);

  std::vector<DataType> types_;
  std::deque<Row> rows_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t last_block_size_ = 0;
  std::size_t room_ = 0;   ///< free bytes at the end of the last block
  char* end_ = nullptr;    ///< where the free bytes begin
  mutable Place reached_;  ///< the value that was asked for last; the next one is mostly behind it
  std::string packed_;     ///< the row that is being appended
};

}  // namespace engine::embedded
