#include <algorithm>
#include <chrono>
#include <filesystem>

#include "support/encoding.h"
#include "support/host_file.h"

namespace support {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::minutes surely_abandoned{10};
constexpr std::string_view journal_ending = "-journal";

fs::path file_path(std::string_view utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

/// What a name holds behind the mark is letters, digits and hyphens: other files are other people's.
bool is_working_name(std::string_view name, std::string_view beginning) {
  if (!name.starts_with(beginning)) return false;
  name.remove_prefix(beginning.size());
  if (name.ends_with(journal_ending)) name.remove_suffix(journal_ending.size());
  constexpr std::string_view token_characters = "-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  return !name.empty() && name.find_first_not_of(token_characters) == std::string_view::npos;
}

bool is_abandoned(const fs::path& file) {
  std::error_code failure;
  if (fs::symlink_status(file, failure).type() != fs::file_type::regular) return false;
  const fs::file_time_type changed = fs::last_write_time(file, failure);
  if (failure || fs::file_time_type::clock::now() - changed < surely_abandoned) return false;
  const std::u8string path = file.u8string();
  return is_host_file_unused({path.begin(), path.end()});
}

}  // namespace

void remove_abandoned_files(const std::string& path, std::string_view mark) {
  std::error_code failure;
  const fs::path file = file_path(path);
  const std::u8string own_name = file.filename().u8string();
  const std::string beginning = std::string(own_name.begin(), own_name.end()).append(mark);
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
    const std::u8string name = entry->path().filename().u8string();
    if (!is_working_name(std::string(name.begin(), name.end()), beginning)) continue;
    std::error_code ignored;
    if (is_abandoned(entry->path())) fs::remove(entry->path(), ignored);
  }
}

}  // namespace support
