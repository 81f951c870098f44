#include "database/jet_import/posix/mdb_indexes.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

#include "support/error.h"

namespace jet_import {
namespace {

/// How the two versions store the same parts: numbers of bytes between the values that are read here.
struct Layout {
  std::size_t name_length_bytes;
  std::size_t before_keys, before_flags, after_flags;
  std::size_t before_numbers, after_numbers, after_type;
};

constexpr Layout jet3{1, 0, 8, 0, 4, 11, 0}, jet4{2, 4, 12, 5, 8, 11, 4};

constexpr std::size_t keys_of_index = 10;
constexpr std::uint64_t no_column = 0xFFFF;

/// Walks a table's definition, which may continue in other pages.
class Definition {
 public:
  Definition(MdbHandle& file, unsigned long page) {
    constexpr int place_of_next = 4;
    constexpr std::size_t page_head = 8, most_bytes = std::size_t{1} << 20U;
    const auto page_size = static_cast<std::size_t>(file.fmt->pg_size);
    while (page != 0 && bytes_.size() < most_bytes) {
      if (mdb_read_pg(&file, page) != file.fmt->pg_size) break;
      const std::size_t skipped = bytes_.empty() ? 0 : page_head;
      bytes_.append(reinterpret_cast<const char*>(file.pg_buf) + skipped, page_size - skipped);
      page = static_cast<std::uint32_t>(mdb_get_int32(file.pg_buf, place_of_next));
    }
  }

  void skip(std::size_t count) { take(count); }
  std::string_view take(std::size_t count) {
    if (count > bytes_.size() - place_) {
      throw support::RuntimeError(support::error_number::unknown_format,
                                  "the table's indexes cannot be read: the file is damaged");
    }
    return std::string_view(bytes_).substr(std::exchange(place_, place_ + count), count);
  }
  std::uint64_t number(std::size_t bytes) {
    std::uint64_t number = 0;
    std::memcpy(&number, take(bytes).data(), bytes);
    return number;
  }

 private:
  std::string bytes_;
  std::size_t place_ = 0;
};

/// The columns and pages of one index, or of several that share them.
struct IndexData {
  std::vector<std::uint64_t> columns;
  std::uint64_t flags = 0;
};

IndexData read_data(Definition& definition, const Layout& layout) {
  IndexData data;
  definition.skip(layout.before_keys);
  for (std::size_t key = 0; key < keys_of_index; ++key) {
    const std::uint64_t column = definition.number(2);
    if (column != no_column) data.columns.push_back(column);
    definition.skip(1);
  }
  definition.skip(layout.before_flags);
  data.flags = definition.number(1);
  definition.skip(layout.after_flags);
  return data;
}

struct IndexEntry {
  std::uint64_t data = 0;
  std::uint64_t type = 0;
};

IndexEntry read_entry(Definition& definition, const Layout& layout) {
  IndexEntry entry;
  definition.skip(layout.before_numbers);
  entry.data = definition.number(4);
  definition.skip(layout.after_numbers);
  entry.type = definition.number(1);
  definition.skip(layout.after_type);
  return entry;
}

/// Finds columns by their number, not by their place: a column keeps its number when one before it is deleted.
std::optional<std::vector<std::string>> names_of(const std::vector<std::uint64_t>& numbers, const MdbTableDef& table) {
  std::vector<std::string> names;
  for (const std::uint64_t number : numbers) {
    for (unsigned place = 0; place < table.num_cols; ++place) {
      const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(table.columns, place));
      if (static_cast<std::uint64_t>(column->col_num) == number) names.emplace_back(column->name);
    }
  }
  if (names.empty() || names.size() != numbers.size()) return std::nullopt;
  return names;
}

/// The number of indexes that have columns of their own, read from the file: libmdb overwrites it with its own count.
std::size_t count_data(MdbHandle& file, unsigned long page) {
  if (mdb_read_pg(&file, page) != file.fmt->pg_size) return 0;
  return static_cast<std::uint32_t>(mdb_get_int32(file.pg_buf, file.fmt->tab_num_ridxs_offset));
}

}  // namespace

FoundIndexes find_indexes(const MdbTableDef& table, JetVersion version) {
  constexpr std::uint64_t primary_key = 1, foreign_key = 2;
  const Layout& layout = version == JetVersion::Jet3 ? jet3 : jet4;
  MdbHandle& file = *table.entry->mdb;
  const std::size_t data_count = count_data(file, table.entry->table_pg);
  Definition definition(file, table.entry->table_pg);
  definition.skip(file.fmt->tab_cols_start_offset);
  for (std::size_t i = 0; i < data_count; ++i) definition.skip(file.fmt->tab_ridx_entry_size);
  for (unsigned i = 0; i < table.num_cols; ++i) definition.skip(file.fmt->tab_col_entry_size);
  for (unsigned i = 0; i < table.num_cols; ++i) definition.skip(definition.number(layout.name_length_bytes));
  std::vector<IndexData> data;
  for (std::size_t i = 0; i < data_count; ++i) data.push_back(read_data(definition, layout));
  std::vector<IndexEntry> entries;
  for (unsigned i = 0; i < table.num_idxs; ++i) entries.push_back(read_entry(definition, layout));
  FoundIndexes found;
  for (const IndexEntry& entry : entries) {
    const std::string name = jet_text(version, definition.take(definition.number(layout.name_length_bytes)));
    if (entry.type == foreign_key) continue;
    const auto fields = entry.data < data.size() ? names_of(data[entry.data].columns, table) : std::nullopt;
    if (!fields) {
      found.unreadable.push_back(name);
      continue;
    }
    const auto has = [&](std::uint64_t flag) { return (data[entry.data].flags & flag) != 0; };
    found.indexes.push_back({name, *fields, entry.type == primary_key, has(MDB_IDX_UNIQUE), has(MDB_IDX_REQUIRED),
                             has(MDB_IDX_IGNORENULLS)});
  }
  return found;
}

}  // namespace jet_import
