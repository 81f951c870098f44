// The text of a SQLite statement, written piece by piece.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace engine::embedded {

/// "name"; a quote inside is written twice.
std::string quoted_name(std::string_view name);
/// 'text'; a quote inside is written twice. Precondition: no NUL, which would end the statement.
std::string quoted_text(std::string_view text);

namespace jet_sql {

class SqlText {
 public:
  /// This and the functions below raise 3360 where the text gets too long.
  SqlText& write(std::string_view text);
  void name(std::string_view name);
  void text_literal(std::string_view text);
  void number_literal(double number);
  void whole_literal(std::int64_t number);
  template <typename Range, typename Write>
  void list(const Range& range, std::string_view separator, Write write_item) {
    bool first = true;
    for (const auto& item : range) {
      if (!std::exchange(first, false)) write(separator);
      write_item(item);
    }
  }

  /// The text that was written so far.
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace jet_sql

}  // namespace engine::embedded
