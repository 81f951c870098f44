#include "support/shell.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <linux/magic.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>

#include "support/error.h"
#include "support/file_system.h"
#include "support/host_file.h"
#include "support/posix/descriptor.h"

namespace support {

namespace {

// Magic numbers of file systems that the kernel's headers do not define.
constexpr unsigned long cifs_magic = 0xFF534D42;
constexpr unsigned long smb2_magic = 0xFE534D42;

std::string absolute_host_path(std::string_view path) {
  const FileSystem& files = host_file_system();
  const std::string host = files.host_path(path);
  return host.starts_with('/') ? host : files.host_path(files.windows_path(host));
}

std::string trash_folder() {
  const char* const data = std::getenv("XDG_DATA_HOME");
  if (data != nullptr && *data == '/') return std::string(data) + "/Trash";
  const char* const home = std::getenv("HOME");
  return std::string(home != nullptr ? home : "") + "/.local/share/Trash";
}

/// A path as the trash writes it: every byte but plain letters in the form %XX.
std::string percent_encoded(std::string_view path) {
  constexpr std::string_view plain_characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string encoded;
  for (const char byte : path) {
    if (plain_characters.find(byte) != std::string_view::npos) {
      encoded += byte;
      continue;
    }
    encoded += fmt::format("%{:02X}", static_cast<unsigned char>(byte));
  }
  return encoded;
}

std::string local_time_text() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &local);
  return text.data();
}

/// Takes a free name in the trash by creating its note; empty if that fails.
std::string reserve_trash_name(const std::string& trash, const std::string& name, const std::string& note) {
  constexpr int most_attempts = 10000;
  for (int attempt = 1; attempt <= most_attempts; ++attempt) {
    std::string candidate = attempt == 1 ? name : fmt::format("{}.{}", name, attempt);
    if (host_file_exists(trash + "/files/" + candidate)) continue;
    const std::string path = trash + "/info/" + candidate + ".trashinfo";
    const Descriptor descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!descriptor && errno == EEXIST) continue;
    if (!descriptor) return {};
    if (write(descriptor.get(), note.data(), note.size()) == static_cast<ssize_t>(note.size())) return candidate;
    unlink(path.c_str());
    return {};
  }
  return {};
}

/// Moves a file to a free name. Between two file systems, the copy is complete on the disk before the file is removed.
bool move_file(const std::string& source, const std::string& target) {
  constexpr std::uint64_t most_copied = std::uint64_t{64} << 20U;
  if (std::rename(source.c_str(), target.c_str()) == 0) return true;
  if (errno != EXDEV) return false;
  const auto content = read_host_file(source, most_copied);
  if (!content) return false;
  try {
    replace_host_file(target, *content);
  } catch (const RuntimeError&) {
    return false;
  }
  return unlink(source.c_str()) == 0;
}

bool move_to_trash(const std::string& trash, const std::string& host_folder, const std::string& name) {
  const std::string path = host_folder + "/" + name;
  const std::string note = "[Trash Info]\nPath=" + percent_encoded(path) + "\nDeletionDate=" + local_time_text() + "\n";
  const std::string trash_name = reserve_trash_name(trash, name, note);
  if (trash_name.empty()) return false;
  if (move_file(path, trash + "/files/" + trash_name)) return true;
  unlink((trash + "/info/" + trash_name + ".trashinfo").c_str());
  return false;
}

}  // namespace

// The trash of these desktops neither asks nor shows progress.
std::vector<std::string> recycle(std::string_view folder, std::string_view pattern, const RecycleDisplay&) {
  FileSystem& files = host_file_system();
  std::vector<std::string> moved = files.files(folder, pattern);
  if (moved.empty()) return moved;
  const std::string trash = trash_folder();
  for (const char* part : {"/files", "/info"}) files.create_folder(files.windows_path(trash + part));
  std::string host_folder = absolute_host_path(folder);
  while (host_folder.ends_with('/')) host_folder.pop_back();
  std::erase_if(moved, [&](const std::string& name) { return !move_to_trash(trash, host_folder, name); });
  return moved;
}

/// Whatever cannot be moved to the trash stays where it is.
bool has_recycle_bin(std::string_view) { return true; }

bool open_file(std::string_view path) {
  std::string program = "xdg-open";
  std::string file = absolute_host_path(path);
  if (!host_file_exists(file)) return false;
  const std::array<char*, 3> arguments = {program.data(), file.data(), nullptr};
  pid_t process = 0;
  // The program may go on running; when this process ends, the system takes over the program's result.
  return posix_spawnp(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0;
}

std::optional<std::string> choose_folder(std::string_view /*title*/, void* /*owner*/) { return std::nullopt; }

bool is_network_path(std::string_view path) {
  struct statfs status {};
  if (statfs(host_file_system().host_path(path).c_str(), &status) != 0) return false;
  const auto type = static_cast<unsigned long>(status.f_type) & 0xFFFFFFFFUL;
  return type == NFS_SUPER_MAGIC || type == SMB_SUPER_MAGIC || type == cifs_magic || type == smb2_magic;
}

}  // namespace support
