// A folder of another computer is shown as it was some seconds ago: the journal of a program that died may lie beside a
// file and not be seen yet. A file there that somebody changed a moment ago is not read before it would be.
#pragma once

#include <chrono>
#include <filesystem>
#include <set>
#include <string>

namespace engine::embedded {

class SharePatience {
 public:
  using Time = std::filesystem::file_time_type;

  /// How long a file must lie unchanged.
  explicit SharePatience(std::chrono::milliseconds cache_time) : cache_time_(cache_time) {}

  /// How long to wait before a file that was changed then is read. The other computer's clock may differ from ours:
  /// never longer than the cache time, and once for each change.
  std::chrono::milliseconds wait_before_reading(Time changed, Time now);
  /// This program has changed a file, and saw the journals itself. A file that it renames afterwards keeps the time.
  void changed_here(Time changed, Time now);

 private:
  std::chrono::milliseconds cache_time_;
  std::set<Time> known_;  ///< of changes that need no wait
};

/// Waits where the file lies on another computer and somebody else changed it: ten seconds after the change, which is
/// as long as Windows keeps what it saw of a folder. Where this cannot be asked, waits for nothing.
void wait_until_journal_is_seen(const std::string& host_path);
/// At the end of what this program wrote.
void note_own_change(const std::string& host_path) noexcept;

}  // namespace engine::embedded
