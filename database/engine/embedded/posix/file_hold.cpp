#include "database/engine/embedded/file_hold.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <thread>
#include <vector>

#include "database/engine/engine_error.h"
#include "support/posix/descriptor.h"

namespace engine::embedded {
namespace {

bool set_lock(int descriptor, short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = held_byte;
  lock.l_len = 1;
  return fcntl(descriptor, F_OFD_SETLK, &lock) == 0;
}

}  // namespace

/// One object for all handles of a file in this process. Closing any descriptor of a file removes the locks that SQLite
/// holds on it, so the descriptor stays open until the last handle is closed.
class FileHold::Held {
 public:
  struct Identity {
    // A forked process shares the locks of its parent, so it needs an object with locks of its own.
    pid_t process = 0;
    dev_t device = 0;
    ino_t number = 0;
    bool operator==(const Identity&) const = default;
  };
  static Identity identity_of(const struct stat& status) { return {getpid(), status.st_dev, status.st_ino}; }

  static std::shared_ptr<Held> find(const Identity& wanted) {
    const auto found = std::ranges::find_if(all(), [&](const std::weak_ptr<Held>& held) {
      const std::shared_ptr<Held> there = held.lock();
      return there && there->identity == wanted;
    });
    return found == all().end() ? nullptr : found->lock();
  }
  /// Null where the file cannot be opened.
  static std::shared_ptr<Held> open_file(const std::string& path) {
    constexpr int flags = O_CLOEXEC | O_NONBLOCK;
    auto descriptor = std::make_unique<support::Descriptor>(open(path.c_str(), O_RDWR | flags));
    if (!*descriptor) descriptor = std::make_unique<support::Descriptor>(open(path.c_str(), O_RDONLY | flags));
    struct stat status {};
    if (!*descriptor || fstat(descriptor->get(), &status) != 0) return nullptr;
    std::shared_ptr<Held> held = find(identity_of(status));
    if (!held) {
      held = std::make_shared<Held>();
      held->identity = identity_of(status);
      std::erase_if(all(), [](const std::weak_ptr<Held>& other) { return other.expired(); });
      all().push_back(held);
    }
    held->descriptors.push_back(std::move(descriptor));
    return held;
  }
  int descriptor() const { return descriptors.front()->get(); }

  Identity identity;
  std::vector<std::unique_ptr<support::Descriptor>> descriptors;
  bool alone = false;

 private:
  static std::vector<std::weak_ptr<Held>>& all() {
    static std::vector<std::weak_ptr<Held>> files;
    return files;
  }
};

FileHold::FileHold() noexcept = default;

FileHold::FileHold(const std::string& host_path, std::chrono::milliseconds busy_time) {
  const auto end = std::chrono::steady_clock::now() + busy_time;
  for (struct stat status{}; stat(host_path.c_str(), &status) == 0;) {
    std::shared_ptr<Held> held = Held::find(Held::identity_of(status));
    if (!held) held = Held::open_file(host_path);
    if (!held) return;
    const bool locked = !held->alone && (set_lock(held->descriptor(), F_RDLCK) || (errno != EAGAIN && errno != EACCES));
    struct stat now {};
    // Another file may have taken the name before the lock was acquired.
    const bool is_that_file = stat(host_path.c_str(), &now) == 0 && Held::identity_of(now) == held->identity;
    if (locked && is_that_file) {
      held_ = std::move(held);
      return;
    }
    if (is_that_file && std::chrono::steady_clock::now() >= end) raise(error_number::file_in_use);
    if (is_that_file) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
}

FileHold::~FileHold() { let_others_in(); }

bool FileHold::hold_alone() {
  if (!held_ || held_.use_count() != 1 || !set_lock(held_->descriptor(), F_WRLCK)) return false;
  held_->alone = true;
  return true;
}

void FileHold::let_others_in() noexcept {
  if (!held_ || !held_->alone) return;
  held_->alone = false;
  set_lock(held_->descriptor(), F_RDLCK);
}

}  // namespace engine::embedded
