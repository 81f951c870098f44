#include "support/harbinox.h"

#include <algorithm>
#include <limits>

#include "support/encoding.h"
#include "support/error.h"

namespace support {

namespace {

std::string reversed(std::string_view text) { return {text.rbegin(), text.rend()}; }

/// Replaces every occurrence and returns how many. The occurrence that begins first also ends first, so instead of
/// searching again from the first character the search goes on behind the known part, with the replacement as the text
/// to come: linear in the text. Every text has its lower-case form beside it, of the same length.
std::size_t replace_all(std::string& text, const std::string& lower_wanted, std::string_view replacement) {
  const std::string next = reversed(replacement);
  const std::string lower_next = reversed(to_lower(replacement));
  // A longer replacement can breed occurrences without end; no sensible call comes near this limit.
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

std::int16_t replace(std::string& text, std::string_view wanted, std::string_view replacement) {
  Procedure procedure("harbinox!replace");
  std::size_t count = 0;
  procedure.step([&] {
    const std::string lower_wanted = to_lower(wanted);
    if (lower_wanted.empty() || to_lower(replacement).find(lower_wanted) != std::string::npos) return;
    count = replace_all(text, lower_wanted, replacement);
  });
  constexpr auto most_counted = static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max());
  return static_cast<std::int16_t>(std::min(count, most_counted));
}

}  // namespace support
