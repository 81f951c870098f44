// The order of texts: case does not count, accented letters stand behind their plain ones, trailing blanks do not
// count.
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace engine::embedded::jet_sql {

inline constexpr const char* collation_name = "JET";

/// What a character counts as: the letter or sign that orders it, then the accent that distinguishes it from others of
/// that letter.
struct CharacterWeight {
  std::uint32_t primary;
  std::uint16_t secondary;
  friend bool operator==(const CharacterWeight&, const CharacterWeight&) = default;
  friend bool operator<(const CharacterWeight& left, const CharacterWeight& right) {
    return left.primary != right.primary ? left.primary < right.primary : left.secondary < right.secondary;
  }
};

CharacterWeight weight_of_character(char32_t code) noexcept;

/// Negative, 0 or positive where `left` stands before, with or behind `right`. Texts are UTF-8. Each malformed byte is
/// a character of its own, behind all others.
int compare_texts(std::string_view left, std::string_view right) noexcept;

}  // namespace engine::embedded::jet_sql
