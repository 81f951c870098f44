// A picture of Format, read as far as all kinds of pictures have in common: quotes, escapes and sections. Pictures of
// characters: "@@@", "!&&&", ">", "@@@;\-".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace engine::pictures {

struct PictureCharacter {
  /// One character; of what was quoted, all of it.
  std::string text;
  /// Quoted or escaped: printed as it stands.
  bool literal = false;

  bool is(char wanted) const noexcept { return !literal && text.size() == 1 && text.front() == wanted; }
  /// True for one of these; never for a literal.
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
  /// Parted by ";"; at least one.
  std::vector<Section> sections;
};

/// Raises error_picture for a quote that is not closed and a "\" at the end.
Picture read_picture(std::string_view text);

/// Prints what is no placeholder: a literal, a sign, the locale's separators for ":" and "/". Raises error_picture for
/// a letter.
void print_sign(std::string& out, const PictureCharacter& character);

/// A second section is for the empty text and Null. Raises error_picture for what it does not know, and for a text that
/// is longer than placeholders with signs between them: where the rest of it would stand is not said.
std::string print_text(std::string_view text, const Picture& picture);

}  // namespace engine::pictures
