#include "database/engine/embedded/keys_ahead.h"

#include <algorithm>
#include <system_error>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/database_file.h"
#include "support/file_system.h"

namespace engine::embedded {
namespace {

std::size_t processors() noexcept { return std::max(1U, std::thread::hardware_concurrency()); }

}  // namespace

KeysAhead::KeysAhead(std::string_view password) : password_(password) { all().push_back(this); }

KeysAhead::~KeysAhead() {
  {
    const std::lock_guard lock{mutex_};
    ending_ = true;
  }
  work_is_there_.notify_all();
  for (std::thread& thread : threads_) thread.join();
  while (!slots_.empty()) wipe(slots_.begin());
  wipe_memory(password_.data(), password_.size());
  std::erase(all(), this);
}

std::vector<KeysAhead*>& KeysAhead::all() {
  static std::vector<KeysAhead*> objects;
  return objects;
}

std::size_t KeysAhead::most_expected() noexcept { return 2 * processors(); }

void KeysAhead::expect(const FileSalt& salt) {
  {
    const std::lock_guard lock{mutex_};
    if (const auto known = slot_of(salt); known != slots_.end()) {
      ++known->files;
      return;
    }
    slots_.push_back(Slot{salt});
  }
  work_is_there_.notify_one();
  if (threads_.size() < processors()) start_thread();
}

void KeysAhead::start_thread() noexcept {
  try {
    threads_.emplace_back([this] { work(); });
  } catch (const std::exception&) {
    // If the system has no thread left, keys are derived when they are asked for.
  }
}

void KeysAhead::pass(const FileSalt& salt) noexcept {
  const std::lock_guard lock{mutex_};
  const auto slot = slot_of(salt);
  if (slot == slots_.end() || --slot->files > 0) return;
  // The thread that is deriving a key wipes it.
  if (slot->state != State::Deriving) wipe(slot);
}

bool KeysAhead::find(std::string_view password, const FileSalt& salt, KeyBytes& key) {
  for (KeysAhead* ahead : all()) {
    if (ahead->password_ != password) continue;
    std::unique_lock lock{ahead->mutex_};
    const auto slot = ahead->slot_of(salt);
    if (slot == ahead->slots_.end()) continue;
    ahead->wait_for(*slot, lock);
    key = slot->key;
    return true;
  }
  return false;
}

KeysAhead::Slots::iterator KeysAhead::slot_of(const FileSalt& salt) {
  return std::ranges::find_if(slots_, [&](const Slot& slot) { return slot.files > 0 && slot.salt == salt; });
}

void KeysAhead::wait_for(Slot& slot, std::unique_lock<std::mutex>& lock) {
  // A key that no thread has begun is derived here: waiting for a thread would take as long.
  if (slot.state == State::Waiting) derive(slot, lock);
  key_is_ready_.wait(lock, [&] { return slot.state == State::Ready; });
}

void KeysAhead::derive(Slot& slot, std::unique_lock<std::mutex>& lock) {
  slot.state = State::Deriving;
  lock.unlock();
  sqlcipher4_derive_key(reinterpret_cast<const unsigned char*>(password_.data()), password_.size(), slot.salt.data(),
                        slot.key.data());
  lock.lock();
  slot.state = State::Ready;
  key_is_ready_.notify_all();
}

void KeysAhead::work() {
  std::unique_lock lock{mutex_};
  Slots::iterator next;
  const auto is_there = [&] {
    next = std::ranges::find(slots_, State::Waiting, &Slot::state);
    return ending_ || next != slots_.end();
  };
  for (;;) {
    work_is_there_.wait(lock, is_there);
    if (ending_) return;
    derive(*next, lock);
    if (next->files == 0) wipe(next);
  }
}

void KeysAhead::wipe(Slots::iterator slot) noexcept {
  wipe_memory(slot->key.data(), slot->key.size());
  slots_.erase(slot);
}

std::optional<FileSalt> EmbeddedOpenings::new_salt_of(std::string_view path) const {
  if (path.empty() || password_.empty()) return std::nullopt;
  try {
    const std::string host_path = support::host_file_system().host_path(path);
    check_place_of_file(host_path);
    Connection connection{host_path, {.read_only = true}};
    const DatabaseFile file =
        identify_database_file(connection.beginning(telling_size), connection.file_size(), has_journal(host_path));
    if (!file.encrypted || is_key_known(password_, file.salt)) return std::nullopt;
    return file.salt;
  } catch (const support::RuntimeError&) {
    // The opening of the file will say what is wrong with it.
    return std::nullopt;
  }
}

void EmbeddedOpenings::announce(std::string_view path) {
  announced_.push_back(new_salt_of(path));
  if (announced_.back()) keys_.expect(*announced_.back());
}

void EmbeddedOpenings::pass() {
  if (announced_.empty()) return;
  if (announced_.front()) keys_.pass(*announced_.front());
  announced_.pop_front();
}

}  // namespace engine::embedded
