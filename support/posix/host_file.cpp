#include "support/host_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "support/abandoned_files.h"
#include "support/error.h"
#include "support/posix/descriptor.h"

namespace support {

namespace {

constexpr std::chrono::seconds longest_wait{5};

[[noreturn]] void fail(const std::string& path) {
  throw RuntimeError(error_number::path_file_access, "Cannot write " + path + ": " + std::strerror(errno));
}

/// The file that a path means once links are followed; the path itself if there is no file.
std::string link_target(const std::string& path) {
  std::array<char, PATH_MAX> buffer{};
  return realpath(path.c_str(), buffer.data()) != nullptr ? std::string(buffer.data()) : path;
}

/// The path's folder; "." for a name without one.
std::string folder_of(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// A file's new name is on the disk only when its folder is. If the folder cannot be synced, the system writes it
/// later.
void sync_folder_of(const std::string& path) {
  const Descriptor folder(open(folder_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) fsync(folder.get());
}

/// Gives the new file the access rights and the owner of the file that it will replace; the owner only if we may.
bool take_over_rights(int descriptor, const std::string& path) {
  struct stat existing {};
  if (stat(path.c_str(), &existing) != 0) return errno == ENOENT;
  if (fchown(descriptor, existing.st_uid, existing.st_gid) != 0 && errno != EPERM) return false;
  return fchmod(descriptor, existing.st_mode & 07777U) == 0;
}

/// Replacing a file would bypass its write protection. Therefore the protection binds the file's owner and root here,
/// too.
bool is_write_protected(const std::string& path) {
  struct stat existing {};
  if (stat(path.c_str(), &existing) != 0) return false;
  const bool is_protected = (existing.st_mode & 0222U) == 0 || access(path.c_str(), W_OK) != 0;
  if (is_protected) errno = EACCES;
  return is_protected;
}

bool try_lock(int descriptor) { return flock(descriptor, LOCK_EX | LOCK_NB) == 0; }

/// For file systems that cannot rename without replacing: the file gets a second name, then loses its first one.
bool link_and_unlink(const std::string& source, const std::string& target) {
  return link(source.c_str(), target.c_str()) == 0 && unlink(source.c_str()) == 0;
}

/// The same by path, for a file that this process has open: opening and closing it again would release the locks that
/// this process holds on it.
bool take_over_rights(const std::string& path, const std::string& model) {
  struct stat existing {};
  if (stat(model.c_str(), &existing) != 0) return errno == ENOENT;
  if (chown(path.c_str(), existing.st_uid, existing.st_gid) != 0 && errno != EPERM) return false;
  return chmod(path.c_str(), existing.st_mode & 07777U) == 0;
}

/// False only if it is certain that nobody holds a record lock, as SQLite uses them, on the file.
bool has_record_lock(int descriptor) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return fcntl(descriptor, F_OFD_GETLK, &lock) != 0 || lock.l_type != F_UNLCK;
}

}  // namespace

std::optional<std::string> read_host_file(const std::string& path, std::uint64_t limit) {
  // O_NONBLOCK: a pipe without a writer would block us.
  const Descriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!descriptor || fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  if (static_cast<std::uint64_t>(status.st_size) > limit) return std::nullopt;
  std::string content;
  std::array<char, 65536> block{};
  for (;;) {
    const ssize_t count = read(descriptor.get(), block.data(), block.size());
    if (count == 0) return content;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || content.size() + static_cast<std::size_t>(count) > limit) return std::nullopt;
    content.append(block.data(), static_cast<std::size_t>(count));
  }
}

bool host_file_exists(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 || errno != ENOENT;
}

void replace_host_file(const std::string& path, std::string_view content) {
  const std::string target = link_target(path);
  if (is_write_protected(target)) fail(path);
  std::string temporary = target + std::string(replacement_mark) + "XXXXXX";
  const Descriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
  if (!descriptor) fail(path);
  // Held while this function runs: who finds the file sees by the lock that its writer is alive.
  try_lock(descriptor.get());
  const bool replaced = take_over_rights(descriptor.get(), target) && write_all(descriptor.get(), content) &&
                        fsync(descriptor.get()) == 0 && std::rename(temporary.c_str(), target.c_str()) == 0;
  if (!replaced) {
    const int reason = errno;
    unlink(temporary.c_str());
    errno = reason;
    fail(path);
  }
  sync_folder_of(target);
}

bool rename_host_file(const std::string& source, const std::string& target) {
  const bool renamed = renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0 ||
                       ((errno == EINVAL || errno == ENOSYS) && link_and_unlink(source, target));
  if (renamed) sync_folder_of(target);
  return renamed;
}

bool sync_host_file(const std::string& path) {
  const Descriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return descriptor && fsync(descriptor.get()) == 0;
}

bool link_host_file(const std::string& path, const std::string& second_name) {
  const bool linked = link(link_target(path).c_str(), second_name.c_str()) == 0;
  if (linked) sync_folder_of(second_name);
  return linked;
}

std::uint64_t host_file_names(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_nlink : 0;
}

void replace_with_host_file(const std::string& source, const std::string& target,
                            const std::function<bool()>& may_replace) {
  const std::string place = link_target(target);
  if (!may_replace() || is_write_protected(place) || !take_over_rights(source, place) ||
      std::rename(source.c_str(), place.c_str()) != 0) {
    const int reason = errno;
    unlink(source.c_str());
    errno = reason;
    fail(target);
  }
  sync_folder_of(place);
}

bool can_replace_host_file(const std::string& path) {
  const std::string target = link_target(path);
  return !is_write_protected(target) && access(folder_of(target).c_str(), W_OK | X_OK) == 0;
}

class HostFileLock::Held {
 public:
  explicit Held(const std::string& folder) : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
  const Descriptor& descriptor() const noexcept { return descriptor_; }

 private:
  Descriptor descriptor_;
};

// The folder is locked, because each replacement makes the file a different one.
HostFileLock::HostFileLock(const std::string& path) : held_(std::make_unique<Held>(folder_of(link_target(path)))) {
  const auto end = std::chrono::steady_clock::now() + longest_wait;
  while (held_->descriptor() && !try_lock(held_->descriptor().get())) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;
    if (std::chrono::steady_clock::now() > end) {
      throw RuntimeError(error_number::permission_denied,
                         "Cannot write " + path + ": another program is writing there");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
}

HostFileLock::~HostFileLock() = default;

// Network file systems on POSIX ask the server again whenever a file is opened.
bool is_on_other_computer(const std::string&) { return false; }

bool is_host_file_unused(const std::string& path) {
  const Descriptor descriptor(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
  return descriptor && !has_record_lock(descriptor.get()) && try_lock(descriptor.get());
}

}  // namespace support
