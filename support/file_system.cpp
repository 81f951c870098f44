#include "support/file_system.h"

#include "support/encoding.h"

namespace support {

bool file_test(const FileSystem& files, std::string_view path) { return files.file_size(path).value_or(0) >= 1; }

bool matches_pattern(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  const std::string text = to_lower(name);
  const std::string wanted = to_lower(pattern);
  const auto character_at = [](const std::string& from, std::size_t position) {
    return first_characters(std::string_view(from).substr(position), 1);
  };
  std::size_t in_text = 0;
  std::size_t in_wanted = 0;
  // The place in the pattern behind the last "*", and the place in the text up to which that "*" reaches so far.
  std::size_t behind_star = std::string::npos;
  std::size_t star_reach = 0;
  while (in_text < text.size()) {
    const std::string_view character = character_at(text, in_text);
    const std::string_view expected = character_at(wanted, in_wanted);
    if (expected == "*") {
      behind_star = ++in_wanted;
      star_reach = in_text;
    } else if (expected == character || expected == "?") {
      in_wanted += expected.size();
      in_text += character.size();
    } else if (behind_star != std::string::npos) {
      in_wanted = behind_star;
      in_text = star_reach += character_at(text, star_reach).size();
    } else {
      return false;
    }
  }
  return wanted.find_first_not_of('*', in_wanted) == std::string::npos;
}

}  // namespace support
