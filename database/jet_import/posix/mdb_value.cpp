#include "database/jet_import/posix/mdb_value.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

#include "support/error.h"
#include "support/text.h"

namespace jet_import {
namespace {

[[noreturn]] void damaged() {
  throw support::RuntimeError(support::error_number::unknown_format, "the value cannot be read: the file is damaged");
}

template <typename Number>
Number number_at(std::string_view bytes, std::size_t offset = 0) {
  Number number{};
  if (bytes.size() < offset + sizeof number) damaged();
  std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}

/// A row of another page, by the number that leads to it.
std::string_view row_bytes(MdbHandle& file, std::uint32_t page_row) {
  void* page = nullptr;
  int offset = 0;
  std::size_t size = 0;
  if (mdb_find_pg_row(&file, static_cast<int>(page_row), &page, &offset, &size) != 0) damaged();
  return {static_cast<const char*>(page) + offset, size};
}

/// A long value lies behind its head in the row, in one row of another page, or in a chain of those.
std::string long_value(MdbHandle& file, std::string_view field) {
  constexpr std::uint32_t inside = 0x80000000U, one_row = 0x40000000U;
  const auto head = number_at<std::uint32_t>(field);
  const std::size_t size = head & ~(inside | one_row);
  auto page_row = number_at<std::uint32_t>(field, 4);
  std::string bytes;
  if ((head & inside) != 0) {
    bytes = field.substr(std::min<std::size_t>(field.size(), MDB_MEMO_OVERHEAD));
  } else if ((head & one_row) != 0) {
    bytes = row_bytes(file, page_row);
  } else {
    while (bytes.size() < size && page_row != 0) {
      const std::string_view link = row_bytes(file, page_row);
      page_row = number_at<std::uint32_t>(link);
      if (link.size() == sizeof page_row) damaged();
      bytes += link.substr(sizeof page_row);
    }
  }
  if (bytes.size() < size) damaged();
  bytes.resize(size);
  return bytes;
}

std::string_view bytes_of(const MdbField& field) {
  if (field.siz < 0) damaged();
  return {static_cast<const char*>(field.value), static_cast<std::size_t>(field.siz)};
}

/// Both are stored as whole numbers and written by libmdb with a point.
double decimal(const char* text) {
  constexpr std::size_t exact_digits = 15;
  std::string_view rest(text);
  const auto number = support::parse_whole<double>(rest);
  if (!number) damaged();
  if (rest.starts_with('-')) rest.remove_prefix(1);
  std::string digits(rest);
  std::erase(digits, '.');
  digits.erase(0, digits.find_first_not_of('0'));
  if (digits.size() > exact_digits)
    throw support::RuntimeError(support::error_number::overflow, "Overflow: " + std::string(text));
  return *number;
}

using MdbText = std::unique_ptr<char, decltype([](char* text) { g_free(text); })>;

/// "{00112233-4455-6677-8899-AABBCCDDEEFF}": the first three groups are stored as numbers, the others byte by byte.
std::string replication_number(std::string_view bytes) {
  constexpr std::size_t order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  constexpr std::string_view digits = "0123456789ABCDEF";
  if (bytes.size() < std::size(order)) damaged();
  std::string text = "{";
  for (std::size_t i = 0; i < std::size(order); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    const auto byte = static_cast<std::uint8_t>(bytes[order[i]]);
    text.append({digits[byte >> 4U], digits[byte & 15U]});
  }
  return text + "}";
}

/// libmdb reads these from the row's page.
std::string page_text(MdbHandle& file, const MdbColumn& column, const MdbField& field) {
  constexpr int decimal_bytes = 17, money_bytes = 8;
  const auto text = [&](int size, auto&& convert) {
    if (field.siz < size) damaged();
    const MdbText made(convert());
    return std::string(made ? made.get() : "");
  };
  if (column.col_type == MDB_MONEY) {
    return text(money_bytes, [&] { return mdb_money_to_string(&file, field.start); });
  }
  return text(decimal_bytes,
              [&] { return mdb_numeric_to_string(&file, field.start, column.col_scale, column.col_prec); });
}

}  // namespace

engine::Value mdb_value(MdbHandle& file, JetVersion version, const MdbColumn& column, const MdbField& field) {
  // The mark of Null is what Yes and No are stored in.
  if (column.col_type == MDB_BOOL) return field.is_null == 0;
  if (field.is_null != 0) return engine::Null{};
  const std::string_view bytes = bytes_of(field);
  switch (column.col_type) {
    case MDB_BYTE:
      return std::int32_t{number_at<std::uint8_t>(bytes)};
    case MDB_INT:
      return std::int32_t{number_at<std::int16_t>(bytes)};
    case MDB_LONGINT:
      return number_at<std::int32_t>(bytes);
    case MDB_FLOAT:
      return number_at<float>(bytes);
    case MDB_DOUBLE:
      return number_at<double>(bytes);
    case MDB_DATETIME:
      return engine::Date{number_at<double>(bytes)};
    case MDB_TEXT:
      return jet_text(version, bytes);
    case MDB_MEMO:
      return jet_text(version, long_value(file, bytes));
    case MDB_REPID:
      return replication_number(bytes);
    default:
      return decimal(page_text(file, column, field).c_str());
  }
}

std::string mdb_long_value(MdbHandle& file, const MdbField& field) { return long_value(file, bytes_of(field)); }

}  // namespace jet_import
