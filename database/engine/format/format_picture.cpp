#include "database/engine/format/format_picture.h"

#include <algorithm>
#include <vector>

#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::pictures {
namespace {

/// Reads the character, escaped character or quotation at the front of `rest`.
PictureCharacter take_character(std::string_view& rest) {
  if (rest.front() == '"') {
    const std::size_t end = rest.find('"', 1);
    if (end == std::string_view::npos) raise(error_number::invalid_call);
    PictureCharacter quoted{std::string(rest.substr(1, end - 1)), true};
    rest.remove_prefix(end + 1);
    return quoted;
  }
  const bool escaped = rest.front() == '\\';
  if (escaped) rest.remove_prefix(1);
  const std::string_view character = support::first_characters(rest, 1);
  if (character.empty()) raise(error_number::invalid_call);
  rest.remove_prefix(character.size());
  return {std::string(character), escaped};
}

bool is_exponent(const Section& section, std::size_t position) {
  return position + 1 < section.size() && section[position].letter() == 'e' && section[position + 1].is_one_of("+-");
}

PictureKind kind_of(const std::vector<Section>& sections) {
  bool date = false;
  for (const Section& section : sections) {
    for (std::size_t i = 0; i < section.size(); ++i) {
      if (section[i].is_one_of("@&<>!")) return PictureKind::Text;
      date = date || (section[i].letter() != '\0' && !is_exponent(section, i));
    }
  }
  return date ? PictureKind::Date : PictureKind::Number;
}

/// The text between the letters in one of the system's pictures.
std::string separator_of(std::string_view picture, std::string_view letters) {
  const std::size_t begin = picture.find_first_of(letters);
  const std::size_t separator = begin == std::string_view::npos ? begin : picture.find_first_not_of(letters, begin);
  if (separator == std::string_view::npos) return {};
  return std::string(support::first_characters(picture.substr(separator), 1));
}

/// True for letters beyond ASCII: those of the Latin blocks and behind them, except × and ÷ and the signs from U+2000
/// on.
bool is_foreign_letter(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character.front());
  return lead >= 0xC3 && lead < 0xE2 && character != "×" && character != "÷";
}

}  // namespace

char PictureCharacter::letter() const noexcept {
  if (literal || text.size() != 1) return '\0';
  const char lower = static_cast<char>(text.front() | 0x20);
  return lower >= 'a' && lower <= 'z' ? lower : '\0';
}

Picture read_picture(std::string_view text) {
  Picture picture;
  picture.sections.emplace_back();
  while (!text.empty()) {
    PictureCharacter character = take_character(text);
    if (character.is(';')) {
      picture.sections.emplace_back();
    } else {
      picture.sections.back().push_back(std::move(character));
    }
  }
  picture.kind = kind_of(picture.sections);
  return picture;
}

void print_sign(std::string& out, const PictureCharacter& character) {
  if (!character.literal && character.is(':')) {
    out += separator_of(support::user_locale().long_time, "Hhmst");
  } else if (!character.literal && character.is('/')) {
    out += separator_of(support::user_locale().short_date, "dMy");
  } else {
    if (!character.literal && (character.letter() != '\0' || is_foreign_letter(character.text)))
      raise(error_number::invalid_call);
    out += character.text;
  }
}

namespace {

bool is_character_place(const PictureCharacter& character) { return character.is_one_of("@&"); }

/// True where a sign is printed between two placeholders.
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
    // Characters that exceed the places go into the last place.
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
