#include "tests/import/posix/jet3_file.h"

#include <algorithm>

namespace jet3 {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::size_t page_size = 2048;
constexpr std::uint32_t usage_page = 1, objects_page = 2, objects_data_page = 3;
constexpr std::uint32_t inside = 0x80000000U, one_row = 0x40000000U;

bool is_fixed(Type type) { return type < Type::Text || type == Type::ReplicationNumber; }

std::uint16_t size_of(const Column& column) {
  constexpr std::uint16_t sizes[] = {0, 0, 1, 2, 4, 8, 4, 8, 8};
  if (column.type == Type::ReplicationNumber) return 16;
  return is_fixed(column.type) ? sizes[static_cast<std::size_t>(column.type)] : column.size;
}

std::string padded(std::string bytes, std::size_t size = page_size) {
  bytes.resize(size);
  return bytes;
}

/// Rows are at a page's end, their positions at its beginning.
std::string data_page(std::uint32_t table, const std::vector<std::string>& rows, bool delete_first_row) {
  constexpr std::uint16_t deleted = 0xC000;
  std::string head = "\1\1\0\0"s + bytes_of(table) + bytes_of(static_cast<std::uint16_t>(rows.size()));
  std::string tail;
  for (const std::string& row : rows) {
    tail.insert(0, row);
    const auto place = static_cast<std::uint16_t>(page_size - tail.size());
    head += bytes_of(static_cast<std::uint16_t>(place | (delete_first_row && &row == rows.data() ? deleted : 0)));
  }
  return padded(head, page_size - tail.size()) + tail;
}

/// A row consists of the count of columns, the fixed values, the other values, where these begin and end, and which
/// columns are not Null.
std::string stored_row(const std::vector<Column>& columns, const Row& row) {
  std::string fixed(1, static_cast<char>(columns.size())), variable, mask((columns.size() + 7) / 8, '\0');
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (row[i]) mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << i % 8);
    if (is_fixed(columns[i].type)) {
      fixed += padded(row[i].value_or(""), size_of(columns[i]));
    } else {
      starts.push_back(variable.size());
      variable += row[i].value_or("");
    }
  }
  std::string table(1, static_cast<char>(fixed.size() + variable.size()));
  for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
    table += static_cast<char>(fixed.size() + *start);
  }
  return fixed + variable + table + static_cast<char>(starts.size()) + mask;
}

std::string memo_head(std::size_t size, std::uint32_t kind, std::uint32_t page_row) {
  return bytes_of(static_cast<std::uint32_t>(size) | kind) + bytes_of(page_row) + "\0\0\0\0"s;
}

const std::vector<Column>& object_columns() {
  static const std::vector<Column> columns = {
      {"Id", Type::Long}, {"Name", Type::Text, 64}, {"Type", Type::Int}, {"Flags", Type::Long}, {"LvProp", Type::Ole}};
  return columns;
}

Row object(std::uint32_t page, const std::string& name, std::uint32_t flags) {
  return {bytes_of(page), name, bytes_of(std::uint16_t{1}), bytes_of(flags), std::nullopt};
}

std::string header(std::string_view password) {
  constexpr std::string_view password_mask =
      "\x86\xFB\xEC\x37\x5D\x44\x9C\xFA\xC6\x5E\x28\xE6\x13\xB6\x8A\x60\x54\x94\x7B\x36"sv;
  constexpr std::string_view code_page = "\x9F\x46"sv;  // 1252 under its mask
  constexpr std::string_view no_key = "\xFB\x8A\xBC\x4E"sv;
  std::string page = padded("\0\1\0\0Standard Jet DB\0"s);
  page.replace(0x3C, 2, code_page);
  page.replace(0x3E, 4, no_key);
  for (std::size_t i = 0; i < password_mask.size(); ++i) {
    page[0x42 + i] = static_cast<char>((i < password.size() ? password[i] : '\0') ^ password_mask[i]);
  }
  return page;
}

std::string column_entry(const Column& column, std::uint16_t number, std::uint16_t variable, std::uint16_t offset) {
  constexpr char fixed_flag = 1, nullable = 2, auto_number = 4;
  const char flags =
      static_cast<char>(nullable | (is_fixed(column.type) ? fixed_flag : 0) | (column.auto_number ? auto_number : 0));
  return static_cast<char>(column.type) + bytes_of(number) + bytes_of(variable) + bytes_of(number) +
         std::string(6, '\0') + flags + bytes_of(offset) + bytes_of(size_of(column));
}

/// Columns and flags of an index over one column; its pages are not read by these tests.
std::string index_columns(std::uint16_t column, char flags) {
  constexpr std::size_t most_columns = 10;
  std::string real = bytes_of(column) + '\1';
  for (std::size_t i = 1; i < most_columns; ++i) real += "\xFF\xFF\0"sv;
  return real + std::string(8, '\0') + flags;
}

std::string index_entry(std::uint32_t number, char type) {
  return bytes_of(number) + bytes_of(number) + std::string(11, '\0') + type;
}

std::string index_entries(std::uint16_t column, bool relation_first) {
  constexpr char unique_and_required = 9, primary = 1, relation = 2;
  const std::string key = index_columns(column, unique_and_required);
  if (!relation_first) return key + index_entry(0, primary) + "\x0APrimaryKey";
  return index_columns(0, 0) + key + index_entry(1, primary) + index_entry(0, relation) + "\x0APrimaryKey\4Link";
}

}  // namespace

File::File(std::string_view password) : pages_{header(password), "", "", ""} { usage_map(objects_data_page); }

std::uint32_t File::add_page(std::string page) {
  pages_.push_back(std::move(page));
  return static_cast<std::uint32_t>(pages_.size() - 1);
}

std::uint32_t File::usage_map(std::uint32_t page) {
  std::string bits(32, '\0');
  bits[page / 8] = static_cast<char>(1 << page % 8);
  usage_maps_.push_back(std::string(5, '\0') + bits);
  return usage_page << 8U | static_cast<std::uint32_t>(usage_maps_.size() - 1);
}

std::string File::memo_inside(std::string_view text) { return memo_head(text.size(), inside, 0) + std::string(text); }

std::uint32_t File::add_long_value(const std::string& row) {
  constexpr std::uint32_t long_values = 0x4C41564C;  // "LVAL"
  return add_page(data_page(long_values, {row}, false)) << 8U;
}

std::string File::memo_on_page(std::string_view text) {
  return memo_head(text.size(), one_row, add_long_value(std::string(text)));
}

std::string File::memo_on_pages(std::string_view text, std::size_t chunk) {
  std::uint32_t next = 0;
  for (std::size_t chunks = (text.size() + chunk - 1) / chunk; chunks > 0; --chunks) {
    next = add_long_value(bytes_of(next) + std::string(text.substr((chunks - 1) * chunk, chunk)));
  }
  return memo_head(text.size(), 0, next);
}

std::string File::definition(const Table& table, std::uint32_t data_page, std::size_t row_count) {
  const auto variable_columns =
      std::ranges::count_if(table.columns, [](const Column& column) { return !is_fixed(column.type); });
  const std::uint32_t indexes = table.primary_key.empty() ? 0 : table.first_index_of_relation ? 2 : 1;
  const auto columns = static_cast<std::uint16_t>(std::ranges::count(table.columns, false, &Column::deleted));
  constexpr std::uint16_t number_of_no_column = 77;
  std::string page = "\2\1VC\0\0\0\0"s + bytes_of(std::uint32_t{page_size}) +
                     bytes_of(static_cast<std::uint32_t>(row_count)) + "\0\0\0\0N"s +
                     bytes_of(static_cast<std::uint16_t>(table.columns.size())) +
                     bytes_of(static_cast<std::uint16_t>(variable_columns)) + bytes_of(columns) + bytes_of(indexes) +
                     bytes_of(indexes);
  const std::uint32_t map = data_page == objects_data_page ? usage_page << 8U : usage_map(data_page);
  page += bytes_of(map) + bytes_of(map) + std::string(indexes * std::size_t{8}, '\0');
  std::uint16_t number = 0, variable = 0, offset = 0, key = number_of_no_column;
  for (const Column& column : table.columns) {
    if (!column.deleted)
      page += column_entry(column, number, variable, is_fixed(column.type) ? offset : std::uint16_t{0});
    if (is_fixed(column.type)) offset = static_cast<std::uint16_t>(offset + size_of(column));
    if (!is_fixed(column.type)) ++variable;
    if (column.name == table.primary_key) key = number;
    ++number;
  }
  for (const Column& column : table.columns) {
    if (!column.deleted) page += static_cast<char>(column.name.size()) + column.name;
  }
  if (indexes > 0) page += index_entries(key, table.first_index_of_relation);
  return padded(page);
}

void File::add(const Table& table, bool delete_first_row) {
  std::vector<std::string> rows;
  for (const Row& row : table.rows) rows.push_back(stored_row(table.columns, row));
  const std::uint32_t definition_page = add_page("");
  const std::uint32_t data = add_page(data_page(definition_page, rows, delete_first_row));
  pages_[definition_page] = definition(table, data, rows.size() - (delete_first_row ? 1 : 0));
  objects_.push_back(object(definition_page, table.name, 0));
}

std::string File::content() const {
  File whole = *this;
  Table objects{"MSysObjects", object_columns(), objects_, ""};
  objects.rows.insert(objects.rows.begin(), object(objects_page, objects.name, 0x80000000U));
  std::vector<std::string> rows;
  for (const Row& row : objects.rows) rows.push_back(stored_row(objects.columns, row));
  whole.pages_[objects_page] = whole.definition(objects, objects_data_page, rows.size());
  whole.pages_[objects_data_page] = data_page(objects_page, rows, false);
  whole.pages_[usage_page] = data_page(0, usage_maps_, false);
  std::string content;
  for (const std::string& page : whole.pages_) content += page;
  return content;
}

}  // namespace jet3
