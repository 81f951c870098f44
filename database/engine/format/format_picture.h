// A picture of Format, read as far as all kinds of pictures are alike: quotes, escapes and sections. Also pictures of
// characters: "@@@", "!&&&", ">", "@@@;\-".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace engine::pictures {

struct PictureCharacter {
  /// One character, or the whole content of a quotation.
  std::string text;
  /// True for quoted or escaped text, which is printed as it stands.
  bool literal = false;

  bool is(char wanted) const noexcept { return !literal && text.size() == 1 && text.front() == wanted; }
  /// True for one of these characters; false for a literal.
  bool is_one_of(std::string_view wanted) const noexcept {
    return !literal && text.size() == 1 && wanted.find(text.front()) != std::string_view::npos;
  }
  /// An ASCII letter in lower case; '\0' for anything else.
  char letter() const noexcept;
};

using Section = std::vector<PictureCharacter>;

enum class PictureKind { Number, Date, Text };

struct Picture {
  PictureKind kind = PictureKind::Number;
  /// The sections, which ";" separates; at least one.
  std::vector<Section> sections;
};

/// Raises 5 for a quote that is not closed and for a "\" at the end.
Picture read_picture(std::string_view text);

/// Prints a character that is no placeholder: a literal, a sign, or the locale's separator for ":" and "/". Raises
/// 5 for a letter.
void print_sign(std::string& out, const PictureCharacter& character);

/// Prints a text. A second section is for the empty text and Null. Raises 5 for a part that it does not
/// know, and for a text that is longer than the placeholders if signs stand between them: the picture does not say
/// where the rest would stand.
std::string print_text(std::string_view text, const Picture& picture);

}  // namespace engine::pictures
