// A pattern of LIKE: "*" any characters, "?" one character, "#" one digit, "[a-z]" one of a list, "[!a-z]" none of it.
// Case does not count. A range holds what the collation orders between its ends: "ä" lies between "a" and "b".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/collation.h"

namespace engine::embedded::jet_sql {

class LikePattern {
 public:
  /// Raises 93 for a list that is not closed and for a pattern beyond 1000 characters.
  explicit LikePattern(std::string_view pattern);

  bool matches(std::string_view text) const;

 private:
  struct Range {
    CharacterWeight from;
    CharacterWeight until;
  };
  struct Element {
    enum class Kind { Character, AnyOne, AnyMany, Digit, List } kind;
    char32_t character = 0;
    bool negated = false;
    std::vector<Range> ranges{};
  };

  std::size_t read_list(const std::u32string& pattern, std::size_t position);
  static bool accepts(const Element& element, char32_t character);

  std::vector<Element> elements_;
};

}  // namespace engine::embedded::jet_sql
