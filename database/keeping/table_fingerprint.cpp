#include "database/keeping/table_fingerprint.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <type_traits>
#include <utility>

#include "support/encoding.h"
#include "support/error.h"

namespace database::keeping {

namespace {

/// A bijection in which each bit of the input changes about half of the output's bits.
std::uint64_t stirred(std::uint64_t word) noexcept {
  word ^= word >> 32;
  word *= 0xd6e8feb86659fd93;
  word ^= word >> 32;
  word *= 0xd6e8feb86659fd93;
  return word ^ (word >> 32);
}

/// Storing a number may lose the sign of a zero, so the sign does not count.
std::uint64_t bits_of(double number) noexcept { return number == 0 ? 0 : std::bit_cast<std::uint64_t>(number); }

}  // namespace

void FingerprintWriter::add_word(std::uint64_t word) noexcept { row_ = stirred(row_ ^ word) + 0x9e3779b97f4a7c15; }

void FingerprintWriter::add_text(std::string_view text) {
  add_word(text.size());
  for (std::uint64_t word = 0; !text.empty(); word = 0) {
    const std::size_t size = std::min(text.size(), sizeof word);
    std::memcpy(&word, text.data(), size);
    add_word(word);
    text.remove_prefix(size);
  }
}

void FingerprintWriter::add_field(std::string_view name) {
  const std::uint64_t row = std::exchange(row_, fields_);
  add_text(support::to_lower(name));
  fields_ = std::exchange(row_, row);
}

void FingerprintWriter::add_value(const engine::Value& value) {
  add_word(value.index());
  std::visit(
      [this](const auto& content) {
        using Content = std::decay_t<decltype(content)>;
        if constexpr (std::is_same_v<Content, std::string>) {
          add_text(content);
        } else if constexpr (std::is_same_v<Content, engine::Date>) {
          add_word(bits_of(content.days));
        } else if constexpr (std::is_floating_point_v<Content>) {
          add_word(bits_of(static_cast<double>(content)));
        } else if constexpr (!std::is_same_v<Content, engine::Null>) {
          add_word(static_cast<std::uint64_t>(content));
        }
      },
      value);
}

void FingerprintWriter::end_row() {
  // In a sum, the order of rows does not count, and equal rows do not cancel each other out.
  sum_ += stirred(std::exchange(row_, 0));
  ++rows_;
}

std::uint64_t FingerprintWriter::checksum() const noexcept { return stirred(fields_) + sum_; }

TableFingerprint fingerprint_of_table(engine::Database& database, std::string_view table, Progress* progress) {
  FingerprintWriter writer;
  const auto rows = database.open_forward_only("SELECT * FROM [" + std::string(table) + "]");
  const std::int32_t fields = rows->field_count();
  for (std::int32_t field = 0; field < fields; ++field) writer.add_field(rows->field_name(field));
  for (; !rows->eof(); rows->move_next()) {
    for (std::int32_t field = 0; field < fields; ++field) writer.add_value(rows->value(field));
    writer.end_row();
    end_if_interrupted(progress);
  }
  return {std::string(table), writer.rows(), writer.checksum()};
}

std::vector<TableFingerprint> fingerprints(engine::Database& database, Progress* progress, std::int32_t tables_before) {
  engine::TableDefs& tables = database.table_defs();
  std::vector<TableFingerprint> found;
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    const std::string name = tables.item(i)->name();
    if (progress) progress->set_caption(name);
    end_if_interrupted(progress);
    found.push_back(fingerprint_of_table(database, name, progress));
    if (progress) progress->set_value(tables_before + i + 1);
  }
  return found;
}

std::vector<std::string> differing_tables(const std::vector<TableFingerprint>& left,
                                          const std::vector<TableFingerprint>& right) {
  std::vector<std::string> names;
  const auto add_those_missing = [&names](const auto& from, const auto& in) {
    for (const TableFingerprint& print : from) {
      if (std::ranges::find(in, print) != in.end()) continue;
      if (std::ranges::find(names, print.table) == names.end()) names.push_back(print.table);
    }
  };
  add_those_missing(left, right);
  add_those_missing(right, left);
  return names;
}

void require_same_content(const std::vector<TableFingerprint>& source, const std::vector<TableFingerprint>& copy) {
  std::string names;
  for (const std::string& table : differing_tables(source, copy)) names.append(names.empty() ? "" : ", ").append(table);
  if (names.empty()) return;
  throw support::RuntimeError(support::error_number::unknown_format,
                              "What was written is not what was read, and was given up. Tables: " + names);
}

std::int64_t row_count(const std::vector<TableFingerprint>& tables) {
  std::int64_t rows = 0;
  for (const TableFingerprint& table : tables) rows += table.rows;
  return rows;
}

}  // namespace database::keeping
