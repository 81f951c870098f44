// Trimming, splitting and replacing of texts. None raises.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace support {

/// A decimal digit, whatever the locale.
constexpr bool is_digit(char character) noexcept { return character >= '0' && character <= '9'; }

/// The number that the whole text represents, as std::from_chars reads it: no blanks, no "+", "." in every locale.
/// `base` is for whole numbers. Nothing for any other text, for an empty one, and for a number that `Number` cannot
/// hold.
template <typename Number>
std::optional<Number> parse_whole(std::string_view text, [[maybe_unused]] int base = 10) noexcept {
  Number number{};
  const char* const end = text.data() + text.size();
  std::from_chars_result result{};
  if constexpr (std::is_floating_point_v<Number>) {
    result = std::from_chars(text.data(), end, number);
  } else {
    result = std::from_chars(text.data(), end, number, base);
  }
  return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// The text without outer blanks and characters below code 20; empty if the text begins with NUL.
std::string trim(std::string_view text);

/// The text without these characters at both ends.
std::string_view strip(std::string_view text, std::string_view characters) noexcept;

/// Splits at `delimiter` into `pieces` and returns the highest index (count less one). For an empty text it returns -1
/// and leaves `pieces` as it was. A trailing delimiter gives no empty last piece.
std::int16_t Split(std::string_view text, std::vector<std::string>& pieces, std::string_view delimiter);

/// Replaces `wanted`, ignoring case (umlauts included). After each replacement the search starts again from the first
/// character, until none is left; so runs collapse. The time is linear in the text. Returns the number of replacements,
/// at most 32767. If `wanted` is empty or the replacement holds `wanted`, it returns 0 and leaves the text as it was.
/// Never raises.
std::int16_t replace(std::string& text, std::string_view wanted, std::string_view replacement);

}  // namespace support
