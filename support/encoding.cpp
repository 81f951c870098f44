#include "support/encoding.h"

#include <algorithm>
#include <array>
#include <optional>

namespace support {

namespace {

constexpr char32_t replacement_character = 0xFFFD;
constexpr char32_t last_code_point = 0x10FFFF;

// Bytes 80 to 9F of CP1252. The five unassigned bytes stand for the control characters of the same code.
constexpr std::array<char32_t, 32> high_controls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Decoded {
  char32_t code = replacement_character;
  std::size_t length = 1;
  bool well_formed = false;
};

bool is_surrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

std::size_t sequence_length(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

/// The character at `position`. A byte that begins no well-formed character comes alone. Precondition: position < size.
Decoded decode(std::string_view text, std::size_t position) {
  constexpr std::array<char32_t, 5> smallest_of_length = {0, 0, 0x80, 0x800, 0x10000};
  const auto lead = static_cast<unsigned char>(text[position]);
  const std::size_t length = sequence_length(lead);
  if (length == 0 || length > text.size() - position) return {};
  char32_t code = length == 1 ? lead : lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[position + i]);
    if ((next & 0xC0U) != 0x80U) return {};
    code = (code << 6U) | (next & 0x3FU);
  }
  if (code < smallest_of_length[length] || code > last_code_point || is_surrogate(code)) return {};
  return {code, length, true};
}

void append_utf8(std::string& out, char32_t code) {
  const auto append = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (code < 0x80) {
    append(code);
  } else if (code < 0x800) {
    append(0xC0U | (code >> 6U));
    append(0x80U | (code & 0x3FU));
  } else if (code < 0x10000) {
    append(0xE0U | (code >> 12U));
    append(0x80U | ((code >> 6U) & 0x3FU));
    append(0x80U | (code & 0x3FU));
  } else {
    append(0xF0U | (code >> 18U));
    append(0x80U | ((code >> 12U) & 0x3FU));
    append(0x80U | ((code >> 6U) & 0x3FU));
    append(0x80U | (code & 0x3FU));
  }
}

/// The CP1252 byte of a character; -1 where it has none.
int cp1252_byte(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<int>(code);
  const auto* found = std::find(high_controls.begin(), high_controls.end(), code);
  return found == high_controls.end() ? -1 : static_cast<int>(0x80 + (found - high_controls.begin()));
}

struct NearestLetters {
  char32_t first;  ///< the letter that `nearest` begins with; the others follow
  std::u16string_view nearest;
};

/// Letters of Latin Extended-A, Latin Extended-B and Latin Extended Additional, each without the marks that CP1252
/// lacks; "_" for a letter that resembles none.
constexpr NearestLetters nearest_letters[] = {
    {0x100,
     u"AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlL"
     u"lLlNnNnNnnNnOoOoOoŒœRrRrRrSsSsSsŠšTtTtTtUuUuUuUuUuUuWwYyŸZzZzŽžs"},
    {0x180,
     u"bBBb__OCcDDDd_EAEFƒG__IIKkl_MNnOOo__Pp_____tTtTUu_VYyZz_________"
     u"_____________AaIiOoUuÜüÜüÜüÜüeÄäAaÆæGgGgKkOoOo__j___Gg__NnÅåÆæØø"
     u"AaAaEeEeIiIiOoOoRrRrUuUuSsTt__HhNd__ZzAaEeÖöÕõOoOoYylntj__ACcLTs"
     u"z__BU_EeJj__RrYy"},
    {0x1E00,
     u"AaBbBbBbÇçDdDdDdDdDdÈèÉéEeEeEeFfGgHhHhHhHhHhIiÏïKkKkKkLlLlLlLlMm"
     u"MmMmNnNnNnNnÕõÕõÒòÓóPpPpRrRrRrRrSsSsSsŠšSsTtTtTtTtUuUuUuÚúÜüVvVv"
     u"WwWwWwWwWwXxXxYyZzZzZzhtwyasssßdAaAaÂâÂâÂâÂâÂâÁáÀàAaÃãAaEeEeEeÊê"
     u"ÊêÊêÊêÊêIiIiOoOoÔôÔôÔôÔôÔôÓóÒòOoÕõOoUuUuÚúÙùUuUuUuYyYyYyYyLlVvYy"},
};

bool is_combining_mark(char32_t code) { return code >= 0x300 && code <= 0x36F; }

/// The nearest character of CP1252; nothing if none is near.
std::optional<char32_t> nearest(char32_t code) {
  if (cp1252_byte(code) >= 0) return code;
  for (const auto& [first, letters] : nearest_letters) {
    if (code < first || code - first >= letters.size()) continue;
    if (const char16_t letter = letters[code - first]; letter != u'_') return letter;
  }
  return std::nullopt;
}

// Both cases of a letter take the same number of bytes in UTF-8, for all letters of CP1252.
char32_t lower(char32_t code) {
  if (code >= U'A' && code <= U'Z') return code + 0x20;
  if (code >= 0xC0 && code <= 0xDE && code != 0xD7) return code + 0x20;
  if (code == 0x160 || code == 0x152 || code == 0x17D) return code + 1;
  return code == 0x178 ? 0xFF : code;
}

char32_t upper(char32_t code) {
  if (code >= U'a' && code <= U'z') return code - 0x20;
  if (code >= 0xE0 && code <= 0xFE && code != 0xF7) return code - 0x20;
  if (code == 0x161 || code == 0x153 || code == 0x17E) return code - 1;
  return code == 0xFF ? 0x178 : code;
}

template <typename Mapping>
std::string mapped(std::string_view text, Mapping mapping) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const Decoded character = decode(text, position);
    if (character.well_formed) {
      append_utf8(out, mapping(character.code));
    } else {
      out += text[position];
    }
    position += character.length;
  }
  return out;
}

}  // namespace

std::string utf8_from_cp1252(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    append_utf8(out, code >= 0x80 && code <= 0x9F ? high_controls[code - 0x80U] : code);
  }
  return out;
}

std::string cp1252_from_utf8(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const Decoded character = decode(text, position);
    const int byte = character.well_formed ? cp1252_byte(character.code) : -1;
    out += byte < 0 ? '?' : static_cast<char>(byte);
    position += character.length;
  }
  return out;
}

bool fits_cp1252(std::string_view text) noexcept {
  for (std::size_t position = 0; position < text.size();) {
    const Decoded character = decode(text, position);
    if (!character.well_formed || cp1252_byte(character.code) < 0) return false;
    position += character.length;
  }
  return true;
}

std::string nearest_in_cp1252(std::string_view text, char otherwise) {
  std::string out;
  for (std::size_t position = 0; position < text.size();) {
    const Decoded character = decode(text, position);
    position += character.length;
    if (character.well_formed && is_combining_mark(character.code)) continue;
    const auto near = character.well_formed ? nearest(character.code) : std::nullopt;
    append_utf8(out, near ? *near : static_cast<unsigned char>(otherwise));
  }
  return out;
}

std::u16string utf16_from_utf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const Decoded character = decode(text, position);
    if (character.code < 0x10000) {
      out += static_cast<char16_t>(character.code);
    } else {
      const char32_t above = character.code - 0x10000;
      out += static_cast<char16_t>(0xD800U + (above >> 10U));
      out += static_cast<char16_t>(0xDC00U + (above & 0x3FFU));
    }
    position += character.length;
  }
  return out;
}

std::string utf8_from_utf16(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t unit = text[i];
    const bool has_low = i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
    if (unit >= 0xD800 && unit <= 0xDBFF && has_low) {
      append_utf8(out, 0x10000 + ((unit - 0xD800) << 10U) + (text[++i] - 0xDC00U));
    } else {
      append_utf8(out, is_surrogate(unit) ? replacement_character : unit);
    }
  }
  return out;
}

std::size_t character_count(std::string_view utf8) noexcept {
  std::size_t count = 0;
  for (std::size_t position = 0; position < utf8.size(); ++count) position += decode(utf8, position).length;
  return count;
}

std::string_view first_characters(std::string_view utf8, std::size_t characters) noexcept {
  std::size_t position = 0;
  for (; characters > 0 && position < utf8.size(); --characters) position += decode(utf8, position).length;
  return utf8.substr(0, position);
}

bool is_utf8(std::string_view text) noexcept {
  for (std::size_t position = 0; position < text.size();) {
    const Decoded character = decode(text, position);
    if (!character.well_formed) return false;
    position += character.length;
  }
  return true;
}

std::string_view without_byte_order_mark(std::string_view bytes) noexcept {
  if (bytes.starts_with(utf8_byte_order_mark)) bytes.remove_prefix(utf8_byte_order_mark.size());
  return bytes;
}

std::string to_upper(std::string_view utf8) { return mapped(utf8, upper); }

std::string to_lower(std::string_view utf8) { return mapped(utf8, lower); }

bool equal_ignoring_case(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return false;
  const auto code = [](char byte) { return char32_t{static_cast<unsigned char>(byte)}; };
  for (std::size_t i = 0; i < left.size(); ++i) {
    const char32_t first = code(left[i]), second = code(right[i]);
    if (first >= 0x80 || second >= 0x80) return to_lower(left) == to_lower(right);
    if (lower(first) != lower(second)) return false;
  }
  return true;
}

std::size_t find_ignoring_case(std::string_view text, std::string_view wanted, std::size_t start,
                               std::size_t* match_length) {
  if (start > text.size()) return std::string_view::npos;
  const std::size_t found = to_lower(text.substr(start)).find(to_lower(wanted));
  if (found == std::string::npos) return std::string_view::npos;
  if (match_length != nullptr) *match_length = wanted.size();
  return start + found;
}

}  // namespace support
