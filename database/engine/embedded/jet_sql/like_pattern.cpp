#include "database/engine/embedded/jet_sql/like_pattern.h"

#include <algorithm>

#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr std::size_t longest_pattern = 1000;

/// The characters of the text in lower case.
std::u32string folded(std::string_view text) {
  std::u32string characters;
  const std::u16string units = support::utf16_from_utf8(support::to_lower(text));
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool pair = units[i] >= 0xD800 && units[i] <= 0xDBFF && i + 1 < units.size();
    if (pair) {
      characters.push_back((char32_t{units[i]} - 0xD800) * 0x400 + (char32_t{units[i + 1]} - 0xDC00) + 0x10000);
      ++i;
    } else {
      characters.push_back(units[i]);
    }
  }
  return characters;
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) {
  const std::u32string characters = folded(pattern);
  if (characters.size() > longest_pattern) raise(error_number::invalid_pattern);
  for (std::size_t position = 0; position < characters.size(); ++position) {
    switch (characters[position]) {
      case U'*':
        // Several "*" in a row are one.
        if (elements_.empty() || elements_.back().kind != Element::Kind::AnyMany) {
          elements_.push_back({Element::Kind::AnyMany});
        }
        break;
      case U'?':
        elements_.push_back({Element::Kind::AnyOne});
        break;
      case U'#':
        elements_.push_back({Element::Kind::Digit});
        break;
      case U'[':
        position = read_list(characters, position);
        break;
      default:
        elements_.push_back({Element::Kind::Character, characters[position]});
    }
  }
}

/// Position of the "]" of the list that begins at `position`. An empty list matches the empty text.
std::size_t LikePattern::read_list(const std::u32string& pattern, std::size_t position) {
  const std::size_t end = pattern.find(U']', position);
  if (end == std::u32string::npos) raise(error_number::invalid_pattern);
  Element list{Element::Kind::List};
  std::size_t current = position + 1;
  if (current + 1 < end && pattern[current] == U'!') {
    list.negated = true;
    ++current;
  }
  while (current < end) {
    const bool range = current + 2 < end && pattern[current + 1] == U'-';
    const CharacterWeight from = weight_of_character(pattern[current]);
    const CharacterWeight until = weight_of_character(pattern[range ? current + 2 : current]);
    if (until < from) raise(error_number::invalid_pattern);
    list.ranges.push_back({from, until});
    current += range ? 3 : 1;
  }
  if (!list.ranges.empty()) elements_.push_back(std::move(list));
  return end;
}

bool LikePattern::accepts(const Element& element, char32_t character) {
  switch (element.kind) {
    case Element::Kind::Character:
      return element.character == character;
    case Element::Kind::Digit:
      return character >= U'0' && character <= U'9';
    case Element::Kind::List: {
      const CharacterWeight weight = weight_of_character(character);
      return element.negated != std::any_of(element.ranges.begin(), element.ranges.end(), [&](const Range& range) {
               return !(weight < range.from) && !(range.until < weight);
             });
    }
    default:
      return true;
  }
}

/// Only the last "*" has to be tried again, so the work is at most the text's length times the pattern's.
bool LikePattern::matches(std::string_view text) const {
  const std::u32string characters = folded(text);
  std::size_t position = 0;
  std::size_t element = 0;
  std::size_t star = elements_.size();
  std::size_t star_position = 0;
  while (position < characters.size()) {
    if (element < elements_.size() && elements_[element].kind == Element::Kind::AnyMany) {
      star = element++;
      star_position = position;
    } else if (element < elements_.size() && accepts(elements_[element], characters[position])) {
      ++element;
      ++position;
    } else if (star < elements_.size()) {
      element = star + 1;
      position = ++star_position;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].kind == Element::Kind::AnyMany) ++element;
  return element == elements_.size();
}

}  // namespace engine::embedded::jet_sql
