#include "database/engine/format/format_picture.h"

#include <algorithm>

#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::pictures {
namespace {

/// Reads the character, literal or quotation at the front of `rest`.
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

/// What a picture of the system's has between its letters.
std::string separator_of(std::string_view picture, std::string_view letters) {
  const std::size_t begin = picture.find_first_of(letters);
  const std::size_t separator = begin == std::string_view::npos ? begin : picture.find_first_not_of(letters, begin);
  if (separator == std::string_view::npos) return {};
  return std::string(support::first_characters(picture.substr(separator), 1));
}

/// Letters beyond ASCII: those of Latin and what follows it, but for × and ÷ and the signs from U+2000 on.
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

}  // namespace engine::pictures
