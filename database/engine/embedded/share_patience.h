// Windows shows a folder of another computer as it was some seconds ago. The journal of a program that died may
// therefore lie beside a file and not be seen yet. A file there that somebody changed a moment ago is not read before
// its journal would be seen.
#pragma once

#include <chrono>
#include <filesystem>
#include <set>
#include <string>

namespace engine::embedded {

class SharePatience {
 public:
  using Time = std::filesystem::file_time_type;

  /// `cache_time`: how long a file must have been unchanged.
  explicit SharePatience(std::chrono::milliseconds cache_time) : cache_time_(cache_time) {}

  /// How long to wait before reading a file that was changed at `changed`. The other computer's clock may differ from
  /// ours, so the wait is never longer than the cache time, and each change is waited for once.
  std::chrono::milliseconds wait_before_reading(Time changed, Time now);
  /// Says that this program has changed a file; it saw the journals itself. A file that it renames afterwards keeps
  /// that time.
  void changed_here(Time changed, Time now);

 private:
  std::chrono::milliseconds cache_time_;
  std::set<Time> known_;  ///< times of changes that need no wait
};

/// Waits where the file lies on another computer and somebody else changed it, until ten seconds after the change: that
/// long Windows keeps what it saw of a folder. Does not wait where the system cannot answer.
void wait_until_journal_is_seen(const std::string& host_path);
/// Call it at the end of everything that this program wrote.
void note_own_change(const std::string& host_path) noexcept;

}  // namespace engine::embedded
