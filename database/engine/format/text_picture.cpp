#include "database/engine/format/text_picture.h"

#include <algorithm>
#include <vector>

#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::pictures {
namespace {

bool is_character_place(const PictureCharacter& character) { return character.is_one_of("@&"); }

/// True where something is printed between two placeholders.
bool has_sign_between(const Section& section) {
  const auto first = std::ranges::find_if(section, is_character_place);
  const auto last = std::find_if(section.rbegin(), section.rend(), is_character_place).base();
  return first < last && !std::all_of(first, last, [](const PictureCharacter& character) {
           return is_character_place(character) || character.is_one_of("<>!");
         });
}

std::vector<std::string> characters_of(std::string_view text) {
  std::vector<std::string> characters;
  while (!text.empty()) {
    const std::string_view first = support::first_characters(text, 1);
    characters.emplace_back(first);
    text.remove_prefix(first.size());
  }
  return characters;
}

std::string print_places(std::string_view text, const Section& section) {
  const std::vector<std::string> characters = characters_of(text);
  const auto places = static_cast<std::size_t>(std::ranges::count_if(section, is_character_place));
  const bool from_left = std::ranges::any_of(section, [](const PictureCharacter& each) { return each.is('!'); });
  if (characters.size() > places && has_sign_between(section)) raise(error_number::invalid_call);
  const std::size_t empty = places - std::min(places, characters.size());
  const std::size_t first_filled = from_left ? 0 : empty;
  std::string printed;
  std::size_t place = 0;
  std::size_t next = 0;
  for (const PictureCharacter& character : section) {
    if (character.is_one_of("<>!")) continue;
    if (character.is_one_of("0#")) raise(error_number::invalid_call);
    if (!is_character_place(character)) {
      print_sign(printed, character);
      continue;
    }
    const bool filled = place >= first_filled && next < characters.size();
    if (filled) printed += characters[next++];
    if (!filled && character.is('@')) printed += ' ';
    // What exceeds the places stands in the last.
    if (++place == places) {
      while (next < characters.size()) printed += characters[next++];
    }
  }
  return places == 0 ? printed + std::string(text) : printed;
}

}  // namespace

std::string print_text(std::string_view text, const Picture& picture) {
  constexpr std::size_t most_sections_of_text = 2;
  if (picture.sections.size() > most_sections_of_text) raise(error_number::invalid_call);
  const Section& section = picture.sections[text.empty() ? picture.sections.size() - 1 : 0];
  const auto has = [&](char sign) {
    return std::ranges::any_of(section, [&](const PictureCharacter& each) { return each.is(sign); });
  };
  if (has('<') && has('>')) raise(error_number::invalid_call);
  const std::string cased = has('<') ? support::to_lower(text) : has('>') ? support::to_upper(text) : std::string(text);
  return print_places(cased, section);
}

}  // namespace engine::pictures
