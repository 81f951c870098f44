#include "database/engine/embedded/share_patience.h"

#include <algorithm>
#include <mutex>
#include <thread>

#include "support/host_file.h"
#include "support/host_path.h"
#include "support/yield_to_input.h"

namespace engine::embedded {
namespace {

using std::chrono::milliseconds;

struct Shares {
  std::mutex access;
  SharePatience patience{milliseconds(10'000)};
};

Shares& shares() {
  static Shares shares;
  return shares;
}

}  // namespace

milliseconds SharePatience::wait_before_reading(Time changed, Time now) {
  if (known_.contains(changed)) return {};
  changed_here(changed, now);
  return std::clamp(std::chrono::duration_cast<milliseconds>(changed + cache_time_ - now), milliseconds(0),
                    cache_time_);
}

void SharePatience::changed_here(Time changed, Time now) {
  known_.erase(known_.begin(), known_.lower_bound(now - cache_time_));
  known_.insert(changed);
}

void wait_until_journal_is_seen(const std::string& host_path) {
  if (!support::is_on_other_computer(host_path)) return;
  std::error_code failure;
  const std::filesystem::path path = support::std_path(host_path);
  // A journal cannot undo anything in an empty file.
  if (std::filesystem::file_size(path, failure) == 0 || failure) return;
  const auto changed = std::filesystem::last_write_time(path, failure);
  if (failure) return;
  milliseconds left{};
  {
    const std::scoped_lock lock(shares().access);
    left = shares().patience.wait_before_reading(changed, SharePatience::Time::clock::now());
  }
  for (constexpr milliseconds slice(50); left > milliseconds(0); left -= slice) {
    std::this_thread::sleep_for(std::min(slice, left));
    support::stay_responding();
  }
}

void note_own_change(const std::string& host_path) noexcept {
  try {
    if (!support::is_on_other_computer(host_path)) return;
    const auto changed = std::filesystem::last_write_time(support::std_path(host_path));
    const std::scoped_lock lock(shares().access);
    shares().patience.changed_here(changed, SharePatience::Time::clock::now());
  } catch (...) {
    // Then the next opening waits.
  }
}

}  // namespace engine::embedded
