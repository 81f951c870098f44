#include "database/engine/embedded/row_buffer.h"

#include <cstring>
#include <type_traits>

namespace engine::embedded {
namespace {

template <typename Content>
void put(std::string& bytes, const Content& content) {
  static_assert(std::is_trivially_copyable_v<Content>);
  bytes.append(reinterpret_cast<const char*>(&content), sizeof content);
}

template <typename Content>
Content get(const char*& position) {
  Content content;
  std::memcpy(&content, position, sizeof content);
  position += sizeof content;
  return content;
}

/// A packed value begins with its position in the variant.
template <typename Content>
constexpr std::uint8_t kind_of = static_cast<std::uint8_t>(Value(Content{}).index());

constexpr std::uint8_t text_kind = 6;
static_assert(std::is_same_v<std::variant_alternative_t<text_kind, Value>, std::string>);
static_assert(std::variant_size_v<Value> == text_kind + 1);

/// Bytes of the contents before the text.
constexpr std::size_t content_sizes[] = {0,           sizeof(bool), sizeof(std::int32_t), sizeof(float), sizeof(double),
                                         sizeof(Date)};

void skip(const char*& position) {
  const auto kind = get<std::uint8_t>(position);
  const std::size_t size = kind == text_kind ? get<std::size_t>(position) : content_sizes[kind];
  position += size;
}

Value unpack(const char* position) {
  switch (get<std::uint8_t>(position)) {
    case kind_of<bool>:
      return get<bool>(position);
    case kind_of<std::int32_t>:
      return get<std::int32_t>(position);
    case kind_of<float>:
      return get<float>(position);
    case kind_of<double>:
      return get<double>(position);
    case kind_of<Date>:
      return get<Date>(position);
    case text_kind: {
      const auto size = get<std::size_t>(position);
      return std::string(position, size);
    }
    default:
      return Null{};
  }
}

}  // namespace

void RowBuffer::begin_row(std::int64_t row_id) { rows_.push_back({row_id, bytes_.size(), false}); }

void RowBuffer::append(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    append_text(*text);
    return;
  }
  put(bytes_, static_cast<std::uint8_t>(value.index()));
  std::visit(
      [&](const auto& content) {
        using Content = std::decay_t<decltype(content)>;
        if constexpr (!std::is_same_v<Content, Null> && !std::is_same_v<Content, std::string>) put(bytes_, content);
      },
      value);
}

void RowBuffer::append_text(std::string_view text) {
  put(bytes_, text_kind);
  put(bytes_, text.size());
  bytes_ += text;
}

Value RowBuffer::value(std::size_t row, std::size_t column) const {
  const char* position = bytes_.data() + rows_[row].offset;
  for (std::size_t i = 0; i < column; ++i) skip(position);
  return unpack(position);
}

void RowBuffer::replace_by_last(std::size_t row) {
  rows_[row] = rows_.back();
  rows_.pop_back();
}

}  // namespace engine::embedded
