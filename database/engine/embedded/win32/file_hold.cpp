#include "database/engine/embedded/file_hold.h"

#include <windows.h>

#include <thread>

#include "database/engine/engine_error.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace engine::embedded {

/// A lock belongs to the handle through which it was asked for, even among handles of one process.
class FileHold::Held {
 public:
  // While it is open, nobody may give the file's name to another file.
  explicit Held(const std::string& path)
      : file_(CreateFileW(support::wide_path(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  bool is_open() const noexcept { return static_cast<bool>(file_); }
  bool lock(DWORD how) {
    OVERLAPPED place = held_place();
    return LockFileEx(file_.get(), how | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
  }
  void unlock() {
    OVERLAPPED place = held_place();
    UnlockFileEx(file_.get(), 0, 1, 0, &place);
  }
  bool alone = false;

 private:
  static OVERLAPPED held_place() {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(held_byte);
    return place;
  }
  support::FileHandle file_;
};

FileHold::FileHold() noexcept = default;

FileHold::FileHold(const std::string& host_path, std::chrono::milliseconds busy_time) {
  auto held = std::make_shared<Held>(host_path);
  if (!held->is_open()) return;
  const auto end = std::chrono::steady_clock::now() + busy_time;
  while (!held->lock(0)) {
    if (GetLastError() != ERROR_LOCK_VIOLATION) return;
    if (std::chrono::steady_clock::now() >= end) raise(error_number::file_in_use);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  held_ = std::move(held);
}

FileHold::~FileHold() = default;

bool FileHold::hold_alone() {
  if (!held_) return false;
  held_->unlock();
  held_->alone = held_->lock(LOCKFILE_EXCLUSIVE_LOCK);
  if (!held_->alone) held_->lock(0);
  return held_->alone;
}

void FileHold::let_others_in() noexcept {
  if (!held_ || !held_->alone) return;
  held_->unlock();
  held_->alone = false;
  held_->lock(0);
}

}  // namespace engine::embedded
