// Text encodings at the program's edges. Inside, every string is UTF-8. Ini files, the system's ANSI calls and the
// diary's documents are in CP1252; Windows' other calls take UTF-16.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace support {

/// CP1252 bytes to UTF-8. The five unassigned bytes become the control characters of the same code. Never fails.
std::string utf8_from_cp1252(std::string_view bytes);

/// UTF-8 to CP1252. A character outside CP1252, and a byte that is no UTF-8, becomes "?".
std::string cp1252_from_utf8(std::string_view text);

/// True if cp1252_from_utf8 loses nothing. A text for which this is false must not be written.
bool fits_cp1252(std::string_view text) noexcept;

/// The text in characters of CP1252. A Latin letter that CP1252 lacks becomes the nearest one that it has ("Ş" becomes
/// "S", "Ấ" becomes "Â"), a combining mark is left out, and anything else, also a malformed byte, becomes `otherwise`.
std::string nearest_in_cp1252(std::string_view text, char otherwise);

/// UTF-8 to UTF-16 and back. Malformed input becomes U+FFFD.
std::u16string utf16_from_utf8(std::string_view text);
std::string utf8_from_utf16(std::u16string_view text);

/// Number of characters (Unicode code points) of a UTF-8 text; a malformed byte counts as one.
std::size_t character_count(std::string_view utf8) noexcept;

/// The first `characters` characters of a UTF-8 text; the whole text where it has fewer.
std::string_view first_characters(std::string_view utf8, std::size_t characters) noexcept;

/// True for well-formed UTF-8 (no surrogates, no overlong forms, at most U+10FFFF).
bool is_utf8(std::string_view text) noexcept;

/// The mark at the beginning of a UTF-8 file.
inline constexpr std::string_view utf8_byte_order_mark = "\xEF\xBB\xBF";
std::string_view without_byte_order_mark(std::string_view bytes) noexcept;

/// Upper and lower case, character by character, for the letters of CP1252 (umlauts included); ß stays ß. The result
/// has as many bytes as the text.
std::string to_upper(std::string_view utf8);
std::string to_lower(std::string_view utf8);

/// True if both texts are equal once to_lower() is applied to them.
bool equal_ignoring_case(std::string_view left, std::string_view right);

/// Position (byte offset) of the first occurrence of `wanted` without regard to case, from byte `start`; npos if none.
/// Length of the match in `text` is written to `match_length` where given.
std::size_t find_ignoring_case(std::string_view text, std::string_view wanted, std::size_t start = 0,
                               std::size_t* match_length = nullptr);

}  // namespace support
