// The order of texts: without regard to case, accented letters behind their plain ones, trailing blanks do not count.
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace engine::embedded::jet_sql {

inline constexpr const char* collation_name = "JET";

/// What a character counts as: the letter or sign that orders it, then the accent that tells it from its likes.
struct CharacterWeight {
  std::uint32_t primary;
  std::uint16_t secondary;
  friend bool operator==(const CharacterWeight&, const CharacterWeight&) = default;
  friend bool operator<(const CharacterWeight& left, const CharacterWeight& right) {
    return left.primary != right.primary ? left.primary < right.primary : left.secondary < right.secondary;
  }
};

CharacterWeight weight_of_character(char32_t code) noexcept;

/// Negative, 0 or positive, as `left` stands before, with or behind `right`. UTF-8; malformed bytes are characters of
/// their own behind all others.
int compare_texts(std::string_view left, std::string_view right) noexcept;

}  // namespace engine::embedded::jet_sql
