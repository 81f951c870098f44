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

/// The whole content of a regular file; nothing where it cannot be read or is larger than `limit` bytes.
std::optional<std::string> read_host_file(const std::string& path, std::uint64_t limit);

/// True where something lies at the path, readable or not.
bool host_file_exists(const std::string& path);

/// Writes beside the file, syncs, and renames over it. An existing file keeps its access rights, and a link stays a
/// link to it; a new file is the user's alone. Raises 75, with the file as it was, also for a read-only file.
void replace_host_file(const std::string& path, std::string_view content);

/// Renames within one file system; never replaces: false where `target` exists or the call fails. The new name is on
/// the disk afterwards.
bool rename_host_file(const std::string& source, const std::string& target);

/// Waits until what was written into a file or folder is on the disk. False where the system refuses; of a folder
/// Windows does not tell.
bool sync_host_file(const std::string& path);

/// Gives a file a second name, which is on the disk afterwards; false where that is taken, or the file system knows no
/// second names.
bool link_host_file(const std::string& path, const std::string& second_name);

/// How many names folders have for the file; 0 where the system does not tell.
std::uint64_t host_file_names(const std::string& path);

/// Puts a file, which is closed and synced, in the place of another one in one step and takes over its access rights.
/// Raises 75: the target is as it was and the source is gone, or, where the system has lost the target, the text names
/// the source, which is kept. `may_replace` is asked before each try; false ends them.
void replace_with_host_file(
    const std::string& source, const std::string& target,
    const std::function<bool()>& may_replace = [] { return true; });

/// False where replace_host_file() would be refused: a read-only file, a folder in which no file can be made. A look
/// only.
bool can_replace_host_file(const std::string& path);

/// Keeps other processes that ask for it from changing the file, for reading and replacing it in one go. Waits five
/// seconds, then raises 70. Where the system has no lock to give, there is none.
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

/// True where the file lies on another computer (Windows: a share or a drive connected to one); false where this cannot
/// be asked.
bool is_on_other_computer(const std::string& path);

/// False where a process holds a lock on the file, or (Windows) has it open, and where it cannot be opened.
bool is_host_file_unused(const std::string& path);

}  // namespace support
