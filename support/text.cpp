#include "support/text.h"

#include <algorithm>
#include <limits>

#include "support/encoding.h"
#include "support/error.h"

namespace support {

namespace {

// Codes 20 to 31 stay: the bound is 20, decimal.
bool is_trimmed(char character) { return static_cast<unsigned char>(character) < 20 || character == ' '; }

std::int16_t saturated(std::size_t count) {
  constexpr auto most_counted = static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max());
  return static_cast<std::int16_t>(std::min(count, most_counted));
}

std::vector<std::string> split_text(std::string_view text, std::string_view delimiter) {
  std::vector<std::string> pieces;
  while (!text.empty()) {
    const auto end = delimiter.empty() ? std::string_view::npos : text.find(delimiter);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + delimiter.size());
  }
  return pieces;
}

std::string reversed(std::string_view text) { return {text.rbegin(), text.rend()}; }

/// Replaces every occurrence and returns how many there were. The occurrence that begins first also ends first.
/// Therefore the search need not start again from the first character: it goes on behind the text that is done, and the
/// replacement becomes part of the text to come. The time is linear in the text. Each text has its lower-case form, of
/// the same length, beside it.
std::size_t replace_all(std::string& text, const std::string& lower_wanted, std::string_view replacement) {
  const std::string next = reversed(replacement);
  const std::string lower_next = reversed(to_lower(replacement));
  // A longer replacement can produce new occurrences without end. No sensible call comes near this limit.
  const std::size_t limit =
      replacement.size() > lower_wanted.size() ? text.size() : std::numeric_limits<std::size_t>::max();
  std::string to_come = reversed(text);
  std::string lower_to_come = reversed(to_lower(text));
  std::string done;
  std::string lower_done;
  std::size_t count = 0;
  while (!to_come.empty()) {
    done += to_come.back();
    lower_done += lower_to_come.back();
    to_come.pop_back();
    lower_to_come.pop_back();
    if (count == limit || !lower_done.ends_with(lower_wanted)) continue;
    ++count;
    done.resize(done.size() - lower_wanted.size());
    lower_done.resize(done.size());
    to_come += next;
    lower_to_come += lower_next;
  }
  text = std::move(done);
  return count;
}

}  // namespace

std::string trim(std::string_view text) {
  Procedure procedure("code!trim");
  if (text.empty() || text.front() == '\0') return {};
  while (!text.empty() && is_trimmed(text.back())) text.remove_suffix(1);
  while (!text.empty() && is_trimmed(text.front())) text.remove_prefix(1);
  return std::string(text);
}

std::string_view strip(std::string_view text, std::string_view characters) noexcept {
  const auto first = text.find_first_not_of(characters);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::int16_t Split(std::string_view text, std::vector<std::string>& pieces, std::string_view delimiter) {
  Procedure procedure("code! Split");
  if (text.empty()) return -1;
  procedure.step([&] { pieces = split_text(text, delimiter); });
  return procedure.pending() ? std::int16_t{-1} : saturated(pieces.size() - 1);
}

std::int16_t replace(std::string& text, std::string_view wanted, std::string_view replacement) {
  Procedure procedure("harbinox!replace");
  std::size_t count = 0;
  procedure.step([&] {
    const std::string lower_wanted = to_lower(wanted);
    if (lower_wanted.empty() || to_lower(replacement).find(lower_wanted) != std::string::npos) return;
    count = replace_all(text, lower_wanted, replacement);
  });
  return saturated(count);
}

}  // namespace support
