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

/// Options may stand anywhere, as "--name value" or "--name=value"; "--" ends them. Raises UsageError for an option
/// that is unknown, given twice, without its value, or with one that it does not take, and for a word that is not
/// UTF-8.
class Arguments {
 public:
  Arguments(std::span<const Option> options, std::span<const std::string> words);

  bool has(std::string_view option) const;
  /// Nothing where the option is not given; empty for a switch.
  std::optional<std::string> value(std::string_view option) const;
  /// The option as a whole number of this range, `fallback` where it is not given. Raises UsageError for any other
  /// text.
  std::int32_t number(std::string_view option, std::int32_t fallback, std::int32_t least, std::int32_t most) const;
  const std::vector<std::string>& operands() const noexcept { return operands_; }
  /// Raises UsageError unless the count of operands is in this range; `usage` says what is expected.
  void expect_operands(std::size_t least, std::size_t most, std::string_view usage) const;

 private:
  std::map<std::string, std::string, std::less<>> options_;
  std::vector<std::string> operands_;
};

/// True where the words ask for help before a "--".
bool asks_for_help(std::span<const std::string> words);

/// The options as lines of a help text.
std::string options_text(std::span<const Option> options);

/// The content of the file at a host path. Raises InputError, which begins with `what` ("The script") and the path and
/// says which it is: a name too long, a missing folder or file, a folder, more than `limit` bytes (in words:
/// `limit_text`), or that it cannot be read.
std::string read_input_file(std::string_view what, const std::string& host_path, std::uint64_t limit,
                            std::string_view limit_text);

}  // namespace console
