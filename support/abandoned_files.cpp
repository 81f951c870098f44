#include "support/abandoned_files.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <random>

#include "support/host_file.h"
#include "support/host_path.h"

namespace support {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::minutes surely_abandoned{10};
constexpr std::string_view journal_ending = "-journal";

/// What a name holds behind the mark is letters, digits and hyphens: other files are other people's.
bool is_token(std::string_view name) {
  constexpr std::string_view token_characters = "-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  return !name.empty() && name.find_first_not_of(token_characters) == std::string_view::npos;
}

bool is_working_name(std::string_view name, std::string_view beginning) {
  if (!name.starts_with(beginning)) return false;
  name.remove_prefix(beginning.size());
  if (name.ends_with(journal_ending)) name.remove_suffix(journal_ending.size());
  // A file that is checked before it gets its name is itself made beside the one that it is to be.
  const std::size_t inner = name.find(new_database_mark);
  if (inner == std::string_view::npos) return is_token(name);
  return is_token(name.substr(0, inner)) && is_token(name.substr(inner + new_database_mark.size()));
}

bool is_old_and_unused(const fs::path& file) {
  std::error_code failure;
  if (fs::symlink_status(file, failure).type() != fs::file_type::regular) return false;
  const fs::file_time_type changed = fs::last_write_time(file, failure);
  if (failure || fs::file_time_type::clock::now() - changed < surely_abandoned) return false;
  return is_host_file_unused(host_path_of(file));
}

/// A journal is written once in a long transaction, and nobody locks it: whether its writer lives tells the database.
bool is_abandoned(const fs::path& file) {
  if (!is_old_and_unused(file)) return false;
  std::string database = host_path_of(file);
  if (!database.ends_with(journal_ending)) return true;
  database.resize(database.size() - journal_ending.size());
  return !host_file_exists(database) || is_old_and_unused(std_path(database));
}

}  // namespace

std::string working_path(std::string_view path, std::string_view mark) {
  std::array<char, 9> token{};
  std::snprintf(token.data(), token.size(), "%08x", std::random_device{}());
  return std::string(path).append(mark).append(token.data());
}

void remove_abandoned_files(const std::string& host_path, std::string_view mark) {
  if (mark == replacement_mark && !host_file_exists(host_path)) return;
  std::error_code failure;
  const fs::path file = std_path(host_path);
  const std::string beginning = host_path_of(file.filename()).append(mark);
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
    if (!is_working_name(host_path_of(entry->path().filename()), beginning)) continue;
    std::error_code ignored;
    if (is_abandoned(entry->path())) fs::remove(entry->path(), ignored);
  }
}

}  // namespace support
