// Makes Jet 3 files of a few pages, byte by byte, because no package contains one: a list of tables, and tables whose
// rows fit into a page, with texts in other pages. What libmdb reads from them is compared with what was put in.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet3 {

enum class Type : std::uint8_t {
  Bool = 1,
  Byte = 2,
  Int = 3,
  Long = 4,
  Money = 5,
  Float = 6,
  Double = 7,
  Date = 8,
  Text = 10,
  Ole = 11,
  Memo = 12,
  ReplicationNumber = 15,
};

struct Column {
  std::string name;
  Type type;
  std::uint16_t size = 0;  ///< the size of a Text
  bool auto_number = false;
  bool deleted = false;  ///< the rows still have its place, but the definition does not name it
};

/// The bytes of each value; nothing for Null and for No.
using Row = std::vector<std::optional<std::string>>;

struct Table {
  std::string name;
  std::vector<Column> columns;
  std::vector<Row> rows;
  std::string primary_key;               ///< a column's name, or one of none; empty: no key
  bool first_index_of_relation = false;  ///< it is an index over the first column; the primary key is the second index
};

/// The bytes of a number.
template <typename Number>
std::string bytes_of(Number number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

class File {
 public:
  explicit File(std::string_view password);
  /// The value of a Memo: inside the row, in a page of its own, or spread over pages of `chunk` bytes each.
  static std::string memo_inside(std::string_view text);
  std::string memo_on_page(std::string_view text);
  std::string memo_on_pages(std::string_view text, std::size_t chunk);
  /// Adds the table; on request the first row is marked as deleted.
  void add(const Table& table, bool delete_first_row = false);
  std::string content() const;

 private:
  std::uint32_t add_page(std::string page);
  std::uint32_t add_long_value(const std::string& row);
  std::uint32_t usage_map(std::uint32_t page);
  std::string definition(const Table& table, std::uint32_t data_page, std::size_t row_count);

  std::vector<std::string> pages_;
  std::vector<std::string> usage_maps_;
  std::vector<Row> objects_;
};

}  // namespace jet3
