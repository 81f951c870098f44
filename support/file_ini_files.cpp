#include "support/file_ini_files.h"

#include <optional>

#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/host.h"
#include "support/host_file.h"

namespace support {

namespace {

std::string host_path(std::string_view file) { return host_file_system().host_path(file); }

/// The part of a value that fits into the caller's buffer of `size` bytes: one pair of quotes is removed, then the rest
/// is cut.
std::string through_buffer(std::string_view value, std::size_t size) {
  const std::string bytes = cp1252_from_utf8(value);
  std::string_view taken = bytes;
  const bool quoted =
      taken.size() >= 2 && (taken.front() == '"' || taken.front() == '\'') && taken.front() == taken.back();
  if (quoted) taken = taken.substr(1, taken.size() - 2);
  return utf8_from_cp1252(taken.substr(0, size > 0 ? size - 1 : 0));
}

/// The part of a list that fits into the buffer. A list always ends with two NULs, even if not all names fit.
std::string list_through_buffer(const std::vector<std::string_view>& names, std::size_t size) {
  std::string list;
  for (const std::string_view name : names) list.append(cp1252_from_utf8(name)).push_back('\0');
  return utf8_from_cp1252(std::string_view(list).substr(0, size > 2 ? size - 2 : 0));
}

}  // namespace

const IniDocument* FileIniFiles::document(std::string_view file) const {
  std::optional<std::string> bytes = read_host_file(host_path(file), most_ini_bytes);
  if (!bytes) return nullptr;
  if (*bytes != cached_bytes_) {
    cached_ = IniDocument::parse(*bytes);
    cached_bytes_ = std::move(*bytes);
  }
  return &cached_;
}

std::string FileIniFiles::value(std::string_view file, std::string_view section, std::string_view key,
                                std::string_view fallback, std::size_t size) const {
  const IniDocument* ini = document(file);
  const auto found = ini != nullptr ? ini->value(section, key) : std::nullopt;
  return through_buffer(found ? *found : fallback.substr(0, fallback.find_last_not_of(' ') + 1), size);
}

std::vector<std::string> FileIniFiles::values(std::string_view file, std::string_view section,
                                              std::span<const std::string> keys, std::size_t size) const {
  const IniDocument* ini = document(file);
  std::vector<std::string> values;
  for (const std::string& key : keys) {
    const auto found = ini != nullptr ? ini->value(section, key) : std::nullopt;
    values.push_back(through_buffer(found.value_or(""), size));
  }
  return values;
}

std::string FileIniFiles::keys(std::string_view file, std::string_view section, std::string_view fallback,
                               std::size_t size) const {
  const IniDocument* ini = document(file);
  const auto names = ini != nullptr ? ini->keys(section) : std::vector<std::string_view>();
  return names.empty() ? through_buffer(fallback, size) : list_through_buffer(names, size);
}

std::string FileIniFiles::sections(std::string_view file, std::string_view /*fallback*/, std::size_t size) const {
  const IniDocument* ini = document(file);
  return ini != nullptr ? list_through_buffer(ini->sections(), size) : std::string();
}

bool FileIniFiles::write(std::string_view file, std::string_view section, std::string_view key,
                         std::string_view value) {
  if (file.empty() || !is_writable_ini_entry(section, key, value)) return false;
  const std::string path = host_path(file);
  try {
    return change(path, file, section, key, value);
  } catch (const RuntimeError&) {
    return false;
  }
}

bool FileIniFiles::change(const std::string& path, std::string_view file, std::string_view section,
                          std::string_view key, std::string_view value) {
  remove_abandoned_files(path, replacement_mark);
  const HostFileLock lock(path);
  const IniDocument* existing = document(file);
  if (existing == nullptr ? host_file_exists(path) : !existing->is_text()) return false;
  IniDocument changed = existing != nullptr ? *existing : IniDocument();
  if (!changed.set(section, key, value)) return true;
  replace_host_file(path, changed.bytes());
  return true;
}

}  // namespace support
