#include "apps/console/arguments.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "support/encoding.h"
#include "support/file_system.h"
#include "support/host_path.h"
#include "support/text.h"

namespace console {
namespace {

const Option& find_option(std::span<const Option> options, std::string_view name) {
  const auto found = std::ranges::find(options, name, &Option::name);
  if (found == options.end()) throw UsageError("There is no option " + std::string(name) + ".");
  return *found;
}

std::string left_column(const Option& option) {
  std::string text(option.name);
  if (!option.value_name.empty()) text.append(" ").append(option.value_name);
  return text;
}

/// Why the file could not be read.
std::string reason_unread(const std::string& host_path, std::uint64_t limit, std::string_view limit_text) {
  const std::filesystem::path path = support::std_path(host_path);
  if (!support::is_name_short_enough(path)) return "cannot be read: its name is too long.";
  std::error_code failure;
  const std::filesystem::file_status status = std::filesystem::status(path, failure);
  if (status.type() == std::filesystem::file_type::not_found) {
    const std::filesystem::path folder = path.parent_path();
    const bool has_folder = folder.empty() || std::filesystem::is_directory(folder, failure);
    return has_folder ? "cannot be read: there is no such file." : "cannot be read: its folder does not exist.";
  }
  if (std::filesystem::is_directory(status)) return "cannot be read: it is a folder.";
  const std::uintmax_t size = std::filesystem::file_size(path, failure);
  if (!failure && size > limit) return "is too large: more than " + std::string(limit_text) + ".";
  return "cannot be read.";
}

}  // namespace

Arguments::Arguments(std::span<const Option> options, std::span<const std::string> words) {
  bool options_ended = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (!support::is_utf8(word)) throw UsageError(fmt::format("Argument {} is not UTF-8.", i + 1));
    if (options_ended || word.size() < 2 || !word.starts_with('-')) {
      operands_.push_back(word);
      continue;
    }
    if (word == "--") {
      options_ended = true;
      continue;
    }
    const std::size_t equals = word.find('=');
    const Option& option = find_option(options, std::string_view(word).substr(0, equals));
    std::string value;
    if (equals != std::string::npos) {
      if (option.value_name.empty()) throw UsageError(std::string(option.name) + " takes no value.");
      value = word.substr(equals + 1);
    } else if (!option.value_name.empty()) {
      if (++i == words.size()) throw UsageError(left_column(option) + ": the value is missing.");
      value = words[i];
    }
    if (!options_.emplace(option.name, value).second) throw UsageError(std::string(option.name) + " is given twice.");
  }
}

bool Arguments::has(std::string_view option) const { return options_.find(option) != options_.end(); }

std::optional<std::string> Arguments::value(std::string_view option) const {
  const auto found = options_.find(option);
  if (found == options_.end()) return std::nullopt;
  return found->second;
}

std::int32_t Arguments::number(std::string_view option, std::int32_t fallback, std::int32_t least,
                               std::int32_t most) const {
  const std::optional<std::string> text = value(option);
  if (!text) return fallback;
  const auto number = support::parse_whole<std::int32_t>(*text);
  if (!number || *number < least || *number > most) {
    throw UsageError(fmt::format("{} takes a whole number from {} to {}, not \"{}\".", option, least, most, *text));
  }
  return *number;
}

void Arguments::expect_operands(std::size_t least, std::size_t most, std::string_view usage) const {
  if (operands_.size() < least) throw UsageError("Something is missing. Usage: " + std::string(usage));
  if (operands_.size() > most) {
    throw UsageError("\"" + operands_[most] + "\" is one argument too many. Usage: " + std::string(usage));
  }
}

bool asks_for_help(std::span<const std::string> words) {
  for (const std::string& word : words) {
    if (word == "--") return false;
    if (word == help_option.name) return true;
  }
  return false;
}

std::string options_text(std::span<const Option> options) {
  std::size_t width = 0;
  for (const Option& option : options) width = std::max(width, left_column(option).size());
  std::string text;
  for (const Option& option : options) {
    std::string line = "  " + left_column(option);
    line.resize(width + 4, ' ');
    text.append(line).append(option.help).append("\n");
  }
  return text;
}

std::string read_input_file(std::string_view what, const std::string& host_path, std::uint64_t limit,
                            std::string_view limit_text) {
  const support::FileSystem& files = support::host_file_system();
  if (auto content = files.read(files.windows_path(host_path), limit)) return *std::move(content);
  throw InputError(std::string(what) + ' ' + host_path + ' ' + reason_unread(host_path, limit, limit_text));
}

}  // namespace console
