#include "database/engine/embedded/row_buffer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>

#include "database/engine/embedded/field_value.h"

namespace engine::embedded {
namespace {

/// Small enough for the heap to give out the same memory again and again. A block that grew with the rows would be new
/// memory each time.
constexpr std::size_t block_size = std::size_t{64} << 10;

/// The first byte of a packed value.
enum class Packed : char { Null, Whole, Number, Text };

template <typename Content>
void put(std::string& bytes, Packed kind, const Content& content) {
  static_assert(std::is_trivially_copyable_v<Content>);
  char packed[1 + sizeof content];
  packed[0] = static_cast<char>(kind);
  std::memcpy(packed + 1, &content, sizeof content);
  bytes.append(packed, sizeof packed);
}

template <typename Content>
Content get(const char*& position) {
  Content content;
  std::memcpy(&content, position, sizeof content);
  position += sizeof content;
  return content;
}

void skip(const char*& position) {
  switch (get<Packed>(position)) {
    case Packed::Null:
      return;
    case Packed::Whole:
      position += sizeof(std::int32_t);
      return;
    case Packed::Number:
      position += sizeof(double);
      return;
    case Packed::Text:
      const auto size = get<std::uint32_t>(position);
      position += size;
      return;
  }
}

Value unpack(const char* position, DataType type) {
  switch (get<Packed>(position)) {
    case Packed::Whole:
      return value_of_number(get<std::int32_t>(position), type);
    case Packed::Number:
      return value_of_number(get<double>(position), type);
    case Packed::Text: {
      const auto size = get<std::uint32_t>(position);
      return std::string(position, size);
    }
    default:
      return Null{};
  }
}

}  // namespace

void RowBuffer::append(const PreparedStatement& row, bool has_row_id) {
  const int columns = static_cast<int>(types_.size());
  for (int column = 0; column < columns; ++column) append_column(row, column);
  end_row(has_row_id ? row.integer(columns) : 0);
}

void RowBuffer::append(std::int64_t row_id, const std::vector<Value>& values) {
  for (const Value& value : values) append_value(value);
  end_row(row_id);
}

void RowBuffer::end_row(std::int64_t row_id) {
  const std::size_t size = packed_.size();
  if (size > room_) {
    room_ = last_block_size_ = std::max(size, block_size);
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(room_));
    end_ = blocks_.back().get();
  }
  std::memcpy(end_, packed_.data(), size);
  rows_.push_back({row_id, end_, false});
  end_ += size;
  room_ -= size;
  packed_.clear();
}

void RowBuffer::append_column(const PreparedStatement& row, int column) {
  switch (row.storage_class(column)) {
    case SQLITE_NULL:
      return append_null();
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      // A number in a column of texts is read as SQLite prints it.
      if (is_text(types_[static_cast<std::size_t>(column)])) return append_text(row.text(column));
      return append_number(row.number(column));
    default:
      return append_text(row.text(column));
  }
}

void RowBuffer::append_value(const Value& value) {
  if (is_null(value)) return append_null();
  if (const auto* text = std::get_if<std::string>(&value)) return append_text(*text);
  append_number(to_double(value));
}

void RowBuffer::append_null() { packed_ += static_cast<char>(Packed::Null); }

void RowBuffer::append_number(double number) {
  using Limits = std::numeric_limits<std::int32_t>;
  const auto whole = number >= Limits::min() && number <= Limits::max() ? static_cast<std::int32_t>(number) : 0;
  // Compares the bits, because a negative zero is not a whole number.
  if (std::bit_cast<std::uint64_t>(static_cast<double>(whole)) == std::bit_cast<std::uint64_t>(number)) {
    put(packed_, Packed::Whole, whole);
  } else {
    put(packed_, Packed::Number, number);
  }
}

void RowBuffer::append_text(std::string_view text) {
  put(packed_, Packed::Text, static_cast<std::uint32_t>(text.size()));
  packed_ += text;
}

Value RowBuffer::value(std::size_t row, std::size_t column) const {
  const char* const values = rows_[row].values;
  if (reached_.values != values || reached_.column > column) reached_ = {values, 0, values};
  for (; reached_.column < column; ++reached_.column) skip(reached_.position);
  return unpack(reached_.position, types_[column]);
}

void RowBuffer::clear() noexcept {
  rows_.clear();
  reached_ = {};
  if (blocks_.empty()) return;
  // The last block is used again.
  blocks_.erase(blocks_.begin(), blocks_.end() - 1);
  end_ = blocks_.back().get();
  room_ = last_block_size_;
}

void RowBuffer::lose_identities_after(std::int64_t last) noexcept {
  for (Row& row : rows_) {
    if (row.id > last) row.id = no_row;
  }
}

void RowBuffer::replace_by_last(std::size_t row) {
  rows_[row] = rows_.back();
  rows_.pop_back();
}

}  // namespace engine::embedded
