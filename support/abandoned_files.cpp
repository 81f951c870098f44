#include "support/abandoned_files.h"

#include <fmt/core.h>

#include <chrono>
#include <random>
#include <vector>

#include "support/host_file.h"
#include "support/host_path.h"
#include "support/host_stream.h"

namespace support {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::minutes surely_abandoned{10};
constexpr std::string_view journal_ending = "-journal";

/// Behind the mark, our own names hold only letters, digits and hyphens. Files with other names belong to somebody
/// else.
bool is_token(std::string_view name) {
  constexpr std::string_view token_characters = "-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  return !name.empty() && name.find_first_not_of(token_characters) == std::string_view::npos;
}

bool is_working_name(std::string_view name, std::string_view beginning) {
  if (!name.starts_with(beginning)) return false;
  name.remove_prefix(beginning.size());
  if (name.ends_with(journal_ending)) name.remove_suffix(journal_ending.size());
  // A database that is checked before it gets its name has a working name of its own while it is made, so both marks
  // are in its name.
  const std::size_t inner = name.find(new_database_mark);
  if (inner == std::string_view::npos) return is_token(name);
  return is_token(name.substr(0, inner)) && is_token(name.substr(inner + new_database_mark.size()));
}

/// True for an entry of this type (not a link to one) that was not changed for a while.
bool is_old(const fs::path& path, fs::file_type type) {
  std::error_code failure;
  if (fs::symlink_status(path, failure).type() != type) return false;
  const fs::file_time_type changed = fs::last_write_time(path, failure);
  return !failure && fs::file_time_type::clock::now() - changed >= surely_abandoned;
}

bool is_old_and_unused(const fs::path& file) {
  return is_old(file, fs::file_type::regular) && is_host_file_unused(host_path_of(file));
}

/// A journal is written once in a long transaction and nobody locks it. Whether its writer is alive can only be seen
/// from the database.
bool is_abandoned(const fs::path& file) {
  if (!is_old_and_unused(file)) return false;
  std::string database = host_path_of(file);
  if (!database.ends_with(journal_ending)) return true;
  database.resize(database.size() - journal_ending.size());
  return !host_file_exists(database) || is_old_and_unused(std_path(database));
}

/// An export puts nothing but files into its folder. A folder that holds anything else belongs to somebody else.
bool is_abandoned_folder(const fs::path& folder) {
  if (!is_old(folder, fs::file_type::directory)) return false;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
    if (!is_old(entry->path(), fs::file_type::regular)) return false;
  }
  return !failure && is_host_folder_unused(host_path_of(folder));
}

/// The entries beside the path that have its name and, behind it, the mark.
std::vector<fs::path> working_entries(const std::string& host_path, std::string_view mark) {
  std::vector<fs::path> found;
  std::error_code failure;
  const fs::path file = std_path(host_path);
  const std::string beginning = host_path_of(file.filename()).append(mark);
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
    if (is_working_name(host_path_of(entry->path().filename()), beginning)) found.push_back(entry->path());
  }
  return found;
}

}  // namespace

std::string working_path(std::string_view path, std::string_view mark) {
  return fmt::format("{}{}{:08x}", path, mark, std::random_device{}());
}

void remove_abandoned_files(const std::string& host_path, std::string_view mark) {
  if (mark == replacement_mark && !host_file_exists(host_path)) return;
  for (const fs::path& file : working_entries(host_path, mark)) {
    std::error_code ignored;
    if (is_abandoned(file)) fs::remove(file, ignored);
  }
}

void remove_abandoned_folders(const std::string& host_path, std::string_view mark) {
  for (const fs::path& folder : working_entries(host_path, mark)) {
    std::error_code ignored;
    if (is_abandoned_folder(folder)) fs::remove_all(folder, ignored);
  }
}

Replaced put_in_place(ReplacementCalls& calls, const std::string& source, const std::string& target) {
  const bool existed = calls.exists(target);
  if (existed ? calls.replace(source, target) : calls.rename(source, target)) return Replaced::Done;
  if (existed && !calls.exists(target)) {
    return calls.rename(source, target) ? Replaced::Done : Replaced::OnlySource;
  }
  calls.remove(source);
  return Replaced::Refused;
}

}  // namespace support
