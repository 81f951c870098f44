// A program's arguments: options by a table, operands in order, the files that they name, and the help text made from
// the same table.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apps/console/console.h"

namespace console {

struct Option {
  std::string_view name;        ///< with its dashes: "--json"
  std::string_view value_name;  ///< empty: a switch
  std::string_view help;
};

inline constexpr Option help_option{"--help", "", "Show this help."};

/// Options may stand anywhere, as "--name value" or "--name=value"; "--" ends them. The constructor raises UsageError
/// for an option that is unknown, given twice, or without its value, for a value that the option does not take, and for
/// a word that is not UTF-8.
class Arguments {
 public:
  Arguments(std::span<const Option> options, std::span<const std::string> words);

  bool has(std::string_view option) const;
  /// Nothing if the option is not given; empty for a switch.
  std::optional<std::string> value(std::string_view option) const;
  /// The option as a whole number in this range; `fallback` if it is not given. Raises UsageError for any other text.
  std::int32_t number(std::string_view option, std::int32_t fallback, std::int32_t least, std::int32_t most) const;
  const std::vector<std::string>& operands() const noexcept { return operands_; }
  /// Raises UsageError unless the number of operands is in this range; `usage` says what is expected.
  void expect_operands(std::size_t least, std::size_t most, std::string_view usage) const;

 private:
  std::map<std::string, std::string, std::less<>> options_;
  std::vector<std::string> operands_;
};

/// True if the words contain --help before a "--".
bool asks_for_help(std::span<const std::string> words);

/// The options as lines of a help text.
std::string options_text(std::span<const Option> options);

/// The content of the file at a host path. Raises InputError if it cannot be read. The error's text begins with `what`
/// ("The script") and the path, and says the reason: a name too long, a missing folder or file, a folder, or more than
/// `limit` bytes (in words: `limit_text`).
std::string read_input_file(std::string_view what, const std::string& host_path, std::uint64_t limit,
                            std::string_view limit_text);

}  // namespace console
