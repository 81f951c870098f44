// The answers of the profile calls, as rows that every adapter must satisfy. They were measured on the calls
// themselves.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace support::testing {

enum class Ask { Value, Keys, Sections };

struct IniReadRow {
  std::string_view what;
  std::string_view file;  // bytes
  Ask ask = Ask::Value;
  std::string_view section;
  std::string_view key;
  std::string_view fallback;
  std::size_t size = 100;
  std::string_view answer;  // UTF-8
  /// Wine's answer differs from the documentation of the calls.
  bool wine_differs = false;
};

struct IniWriteRow {
  std::string_view what;
  std::string_view before;  // bytes
  std::string_view section;
  std::string_view key;
  std::string_view value;
  std::string_view after;  // bytes; the same as before if the write is refused
  bool written = true;
};

const std::vector<IniReadRow>& ini_read_rows();
const std::vector<IniWriteRow>& ini_write_rows();

}  // namespace support::testing
