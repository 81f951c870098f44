#include "database/engine/embedded/jet_sql/collation.h"

#include <array>

namespace engine::embedded::jet_sql {

namespace {

// Signs are ordered by their code, before all others.
constexpr std::uint32_t sign_weight = 0;
constexpr std::uint32_t last_sign_code = 0x2BFF;
constexpr std::uint32_t digit_weight = 0x3000;
constexpr std::uint32_t letter_weight = 0x3100;
constexpr std::uint32_t other_weight = 0x10000;

constexpr CharacterWeight weight_of_ascii(unsigned char code) noexcept {
  if (code >= 'A' && code <= 'Z') return {letter_weight + code, 0};
  if (code >= 'a' && code <= 'z') return {letter_weight + code - 'a' + 'A', 0};
  if (code >= '0' && code <= '9') return {digit_weight + code, 0};
  return {sign_weight + code, 0};
}

constexpr std::array<CharacterWeight, 128> ascii_weights = [] {
  std::array<CharacterWeight, 128> weights{};
  for (std::size_t code = 0; code < weights.size(); ++code) {
    weights[code] = weight_of_ascii(static_cast<unsigned char>(code));
  }
  return weights;
}();

// The plain letter of each character from U+00C0 to U+00FF, for capital and small ones alike. "*" and "/" are signs;
// "?" is a letter of its own.
constexpr std::string_view plain_letters = "AAAAAAACEEEEIIIIDNOOOOO*OUUUUYTSAAAAAAACEEEEIIIIDNOOOOO/OUUUUYTY";

struct Extra {
  char32_t code;
  char plain;
  std::uint16_t secondary;
};
// Letters of CP1252 outside Latin-1.
constexpr Extra extra_letters[] = {
    {0x160, 'S', 0x40}, {0x161, 'S', 0x40}, {0x17D, 'Z', 0x40}, {0x17E, 'Z', 0x40},
    {0x152, 'O', 0x41}, {0x153, 'O', 0x41}, {0x178, 'Y', 0x5F}, {0x192, 'F', 0x40},
};

CharacterWeight weight_of(char32_t code) noexcept {
  if (code >= 0xC0 && code <= 0xFF) {
    const char plain = plain_letters[code - 0xC0];
    if (plain == '*' || plain == '/') return {sign_weight + static_cast<std::uint32_t>(code), 0};
    // A capital letter and its small one are 32 apart. ß has no capital here, and ÿ is a small Ÿ.
    const char32_t small = code == 0xFF ? 0x5F : code == 0xDF ? 0x60 : (code & 0x1F) + 0x20;
    return {letter_weight + static_cast<unsigned char>(plain), static_cast<std::uint16_t>(small)};
  }
  for (const Extra& extra : extra_letters) {
    if (extra.code == code) return {letter_weight + static_cast<unsigned char>(extra.plain), extra.secondary};
  }
  const bool sign = code < 0xC0 || (code >= 0x2000 && code <= last_sign_code);
  return {(sign ? sign_weight : other_weight) + static_cast<std::uint32_t>(code), 0};
}

/// Takes the next character from the text and returns its weight. Precondition: the text is not empty.
CharacterWeight take(std::string_view& text) noexcept {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) {
    text.remove_prefix(1);
    return ascii_weights[lead];
  }
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 1;
  if (length == 1 || text.size() < length) {
    text.remove_prefix(1);
    return {0x200000U + lead, 0};
  }
  char32_t code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  text.remove_prefix(length);
  return weight_of(code);
}

std::string_view without_trailing_blanks(std::string_view text) noexcept {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

bool is_ascii(char character) noexcept { return static_cast<unsigned char>(character) < 0x80; }

/// Length of the beginning that both have in common, as far as it is ASCII and of equal weight. Most texts differ soon
/// behind it.
std::size_t equal_ascii_prefix(std::string_view left, std::string_view right) noexcept {
  const std::size_t end = left.size() < right.size() ? left.size() : right.size();
  std::size_t position = 0;
  while (position < end && is_ascii(left[position]) && is_ascii(right[position]) &&
         ascii_weights[static_cast<unsigned char>(left[position])].primary ==
             ascii_weights[static_cast<unsigned char>(right[position])].primary) {
    ++position;
  }
  return position;
}

int sign_of(std::int64_t difference) noexcept { return difference < 0 ? -1 : difference > 0 ? 1 : 0; }

}  // namespace

CharacterWeight weight_of_character(char32_t code) noexcept {
  return code < 0x80 ? ascii_weights[code] : weight_of(code);
}

int compare_texts(std::string_view left, std::string_view right) noexcept {
  if (left == right) return 0;
  left = without_trailing_blanks(left);
  right = without_trailing_blanks(right);
  const std::size_t equal = equal_ascii_prefix(left, right);
  left.remove_prefix(equal);
  right.remove_prefix(equal);
  int accents = 0;
  while (!left.empty() && !right.empty()) {
    const CharacterWeight one = take(left);
    const CharacterWeight other = take(right);
    if (one.primary != other.primary) return one.primary < other.primary ? -1 : 1;
    if (accents == 0) accents = sign_of(std::int64_t{one.secondary} - other.secondary);
  }
  if (left.empty() != right.empty()) return left.empty() ? -1 : 1;
  return accents;
}

}  // namespace engine::embedded::jet_sql
