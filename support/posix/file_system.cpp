// Windows paths on a POSIX machine.
#include "support/file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>

#include "support/encoding.h"
#include "support/host_file.h"
#include "support/posix/descriptor.h"

namespace support {
namespace {

// No file can be below a device, so this is where a path is put that must not exist.
constexpr std::string_view nowhere = "/dev/null/";

bool status_of(const std::string& path, struct stat& status) { return stat(path.c_str(), &status) == 0; }

bool is_letter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// Calls `visit(name)` for each entry of a folder except "." and "..", in any order. If the folder cannot be read, it
/// calls nothing.
template <typename Visit>
void each_name(const std::string& folder, Visit&& visit) {
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.empty() ? "." : folder.c_str()), closedir);
  if (!directory) return;
  while (const dirent* entry = readdir(directory.get())) {
    const std::string_view name = static_cast<const char*>(entry->d_name);
    if (name != "." && name != "..") visit(name);
  }
}

bool entry_exists(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

/// The places of the letters; nothing where they are more than a few, or where a letter is outside ASCII.
std::optional<std::vector<std::size_t>> few_letters(std::string_view name) {
  constexpr std::size_t few = 6;
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (static_cast<unsigned char>(name[i]) >= 0x80) return std::nullopt;
    if (is_letter(name[i])) places.push_back(i);
  }
  if (places.size() > few) return std::nullopt;
  return places;
}

/// Asks for each spelling of a name with few letters. In a large folder, that takes less time than reading all names.
std::optional<std::string> first_spelling(const std::string& folder, std::string name,
                                          const std::vector<std::size_t>& letters) {
  constexpr char lower_case = 0x20;
  // A set bit is a letter in lower case, the first letter's bit is the highest: the numbers give the sorting order.
  for (std::size_t bits = 0; bits < std::size_t{1} << letters.size(); ++bits) {
    for (std::size_t i = 0; i < letters.size(); ++i) {
      char& letter = name[letters[letters.size() - 1 - i]];
      letter = static_cast<char>((bits >> i) % 2 == 1 ? letter | lower_case : letter & ~lower_case);
    }
    if (entry_exists(folder + name)) return name;
  }
  return std::nullopt;
}

/// The name of the entry that is meant: the exact one, else the first in sorting order that differs only in case, else
/// the given name.
std::string real_name(const std::string& folder, const std::string& name) {
  if (entry_exists(folder + name)) return name;
  if (const auto letters = few_letters(name)) return first_spelling(folder, name, *letters).value_or(name);
  std::optional<std::string> found;
  each_name(folder, [&](std::string_view candidate) {
    if (equal_ignoring_case(candidate, name) && (!found || candidate < *found)) found = candidate;
  });
  return found.value_or(name);
}

/// A path with "/" in which each component takes the spelling it has on disk.
std::string with_real_names(std::string_view path) {
  std::string real = path.starts_with('/') ? "/" : "";
  while (!path.empty()) {
    const auto end = path.find('/');
    const std::string component(path.substr(0, end));
    if (!component.empty()) real += real_name(real, component);
    if (end == std::string_view::npos) break;
    if (!component.empty()) real += '/';
    path.remove_prefix(end + 1);
  }
  return real;
}

bool create_folder_at(std::string path) {
  struct stat status {};
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  if (path.empty() || status_of(path, status)) return path.empty() || S_ISDIR(status.st_mode);
  const auto slash = path.rfind('/');
  if (slash != std::string::npos && slash > 0 && !create_folder_at(path.substr(0, slash))) return false;
  return mkdir(path.c_str(), 0700) == 0 || errno == EEXIST;
}

/// The folder itself or the nearest existing one above it; "." for the empty path.
std::string existing_folder(std::string path) {
  struct stat status {};
  while (!path.empty() && !status_of(path, status)) {
    while (path.ends_with('/') && path.size() > 1) path.pop_back();
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
      path.clear();
    else
      path.resize(slash == 0 && path.size() > 1 ? 1 : slash);
  }
  return path.empty() ? "." : path;
}

class PosixFileSystem final : public FileSystem {
 public:
  std::optional<std::uint64_t> file_size(std::string_view path) const override;
  bool folder_exists(std::string_view path) const override;
  bool create_folder(std::string_view path) override;
  std::vector<std::string> files(std::string_view folder, std::string_view pattern) const override;
  std::optional<std::string> read(std::string_view path, std::uint64_t limit) const override;
  bool rename_without_replacing(std::string_view source, std::string_view target) override;
  bool remove(std::string_view path) override;
  bool can_create_in(std::string_view folder) const override;
  bool can_write(std::string_view path) const override;
  std::optional<std::uint64_t> free_space(std::string_view folder) const override;
  std::string host_path(std::string_view path) const override;
  std::string windows_path(std::string_view host_path) const override;
};

}  // namespace

std::optional<std::uint64_t> PosixFileSystem::file_size(std::string_view path) const {
  struct stat status {};
  if (!status_of(host_path(path), status) || !S_ISREG(status.st_mode)) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

bool PosixFileSystem::folder_exists(std::string_view path) const {
  struct stat status {};
  return status_of(host_path(path), status) && S_ISDIR(status.st_mode);
}

bool PosixFileSystem::create_folder(std::string_view path) {
  return !path.empty() && create_folder_at(host_path(path)) && folder_exists(path);
}

std::vector<std::string> PosixFileSystem::files(std::string_view folder, std::string_view pattern) const {
  std::string host_folder = host_path(folder);
  if (!host_folder.empty() && !host_folder.ends_with('/')) host_folder += '/';
  std::vector<std::string> names;
  each_name(host_folder, [&](std::string_view name) {
    struct stat status {};
    if (!matches_pattern(name, pattern)) return;
    std::string path = host_folder;
    if (status_of(path.append(name), status) && S_ISREG(status.st_mode)) names.emplace_back(name);
  });
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<std::string> PosixFileSystem::read(std::string_view path, std::uint64_t limit) const {
  return read_host_file(host_path(path), limit);
}

bool PosixFileSystem::rename_without_replacing(std::string_view source, std::string_view target) {
  return rename_host_file(host_path(source), host_path(target));
}

bool PosixFileSystem::remove(std::string_view path) { return unlink(host_path(path).c_str()) == 0; }

bool PosixFileSystem::can_create_in(std::string_view folder) const {
  const std::string existing = existing_folder(host_path(folder));
  struct stat status {};
  // The write bits do not bind root; only a read-only mount does, and access() tells of it.
  return status_of(existing, status) && S_ISDIR(status.st_mode) && access(existing.c_str(), W_OK | X_OK) == 0;
}

/// Here, too, a file's write protection binds its owner and root, as it does when files are replaced.
bool PosixFileSystem::can_write(std::string_view path) const {
  const std::string host = host_path(path);
  struct stat status {};
  return status_of(host, status) && S_ISREG(status.st_mode) && (status.st_mode & 0222U) != 0 &&
         access(host.c_str(), W_OK) == 0;
}

std::optional<std::uint64_t> PosixFileSystem::free_space(std::string_view folder) const {
  struct statvfs volume {};
  if (statvfs(existing_folder(host_path(folder)).c_str(), &volume) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(volume.f_bavail) * volume.f_frsize;
}

std::string PosixFileSystem::host_path(std::string_view path) const {
  std::string slashed(path);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  if (slashed.find('\0') != std::string::npos) return std::string(nowhere) + "NUL";
  if (slashed.size() >= 2 && slashed[1] == ':' && is_letter(slashed[0])) {
    if (slashed[0] != 'Z' && slashed[0] != 'z') return std::string(nowhere) + slashed;
    slashed.erase(0, 2);
  }
  return with_real_names(slashed);
}

/// "." and ".." are resolved in the text alone, because people read a stored path and programs compare it.
std::string PosixFileSystem::windows_path(std::string_view host_path) const {
  std::error_code ignored;
  std::string path = (std::filesystem::current_path(ignored) / host_path).lexically_normal().string();
  if (path.size() > 1 && path.ends_with('/') && !host_path.ends_with('/')) path.pop_back();
  std::replace(path.begin(), path.end(), '/', '\\');
  return "Z:" + path;
}

FileSystem& host_file_system() {
  static PosixFileSystem files;
  return files;
}

}  // namespace support
