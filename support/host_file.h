// Whole files by host path (UTF-8, as the system's own calls take it): bounded reading, and replacing a file in one
// step so that a crash or a full disk leaves either the old content or the new.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace support {

/// The whole content of a regular file; nothing if it cannot be read or is larger than `limit` bytes.
std::optional<std::string> read_host_file(const std::string& path, std::uint64_t limit);

/// True if something exists at the path, readable or not.
bool host_file_exists(const std::string& path);

/// Writes the content into a file beside this one, syncs it, and renames it over this one. An existing file keeps its
/// access rights, and a link stays a link to it; a new file belongs to the user alone. Raises 75, also for a read-only
/// file; the file is then as it was.
void replace_host_file(const std::string& path, std::string_view content);

/// Renames within one file system. Never replaces: false if `target` exists or the call fails. Afterwards the new name
/// is on the disk.
bool rename_host_file(const std::string& source, const std::string& target);

/// Waits until what was written into a file or folder is on the disk. False if the system refuses. For a folder,
/// Windows gives no answer.
bool sync_host_file(const std::string& path);

/// Gives a file a second name, which is on the disk afterwards. False if that name is taken, or if the file system has
/// no second names.
bool link_host_file(const std::string& path, const std::string& second_name);

/// How many names the file has in folders; 0 if the system does not say.
std::uint64_t host_file_names(const std::string& path);

/// Puts a closed and synced file in the place of another one, in one step, and takes over the other one's access
/// rights. Raises 75: then the target is as it was and the source is gone. If the system has lost the target, the
/// source is kept, and the error's text names it. `may_replace` is asked before each try; false ends the tries.
void replace_with_host_file(
    const std::string& source, const std::string& target,
    const std::function<bool()>& may_replace = [] { return true; });

/// False if replace_host_file() would refuse: the file is read-only, or no file can be made in its folder. Only looks.
bool can_replace_host_file(const std::string& path);

/// Keeps other processes that take this lock from changing the file while it is read and replaced. Waits five seconds,
/// then raises 70. If the system has no locks, nothing is locked.
class HostFileLock {
 public:
  explicit HostFileLock(const std::string& path);
  ~HostFileLock();
  HostFileLock(const HostFileLock&) = delete;
  HostFileLock& operator=(const HostFileLock&) = delete;

 private:
  class Held;
  std::unique_ptr<Held> held_;
};

/// True if the file lies on another computer (Windows: a share or a drive connected to one); false if the system does
/// not say.
bool is_on_other_computer(const std::string& path);

/// False if a process holds a lock on the file or (Windows) has it open, and if the file cannot be opened.
bool is_host_file_unused(const std::string& path);

}  // namespace support
