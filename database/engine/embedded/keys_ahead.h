// Keys of files that will be opened soon. They are derived on all processors while the program works on the files
// before them.
//
// The threads derive keys and do nothing else. The derivation touches only the memory that it is given, so SQLite,
// which is built for one thread, is not affected by them. All members other than the derivation belong to the one
// thread that opens files.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "database/engine/embedded/file_keys.h"
#include "database/engine/engine.h"

namespace engine::embedded {

class KeysAhead {
 public:
  /// Starts no thread yet.
  explicit KeysAhead(std::string_view password);
  /// Waits for the keys that are being derived, then wipes all keys.
  ~KeysAhead();
  KeysAhead(const KeysAhead&) = delete;
  KeysAhead& operator=(const KeysAhead&) = delete;

  /// Announces that a file with this salt will be opened. Several files may share a salt.
  void expect(const FileSalt& salt);
  /// Says that one of those files is done with. Its key is wiped with the last of them.
  void pass(const FileSalt& salt) noexcept;
  /// How many files are worth expecting at once: every processor has work, and few keys wait in memory.
  static std::size_t most_expected() noexcept;

  /// Stores the key of an expected file in `key`, and waits for it where it is not derived yet. False where nobody
  /// expects the file.
  static bool find(std::string_view password, const FileSalt& salt, KeyBytes& key);

 private:
  enum class State { Waiting, Deriving, Ready };
  struct Slot {
    FileSalt salt;
    std::size_t files = 1;
    State state = State::Waiting;
    KeyBytes key{};
  };
  using Slots = std::list<Slot>;

  static std::vector<KeysAhead*>& all();
  void start_thread() noexcept;
  void work();
  /// Call it with the lock held. It releases the lock while it derives the key.
  void derive(Slot& slot, std::unique_lock<std::mutex>& lock);
  void wait_for(Slot& slot, std::unique_lock<std::mutex>& lock);
  void wipe(Slots::iterator slot) noexcept;
  Slots::iterator slot_of(const FileSalt& salt);

  std::string password_;
  std::mutex mutex_;  ///< guards the members below
  std::condition_variable work_is_there_, key_is_ready_;
  Slots slots_;
  bool ending_ = false;
  std::vector<std::thread> threads_;
};

/// Prepares the opening of encrypted files: reads their salts and derives their keys before they are opened.
class EmbeddedOpenings : public OpeningsAhead {
 public:
  explicit EmbeddedOpenings(std::string_view password) : password_(password), keys_(password) {}
  ~EmbeddedOpenings() override { wipe_memory(password_.data(), password_.size()); }
  EmbeddedOpenings(const EmbeddedOpenings&) = delete;
  EmbeddedOpenings& operator=(const EmbeddedOpenings&) = delete;

  bool has_room() const override { return announced_.size() < KeysAhead::most_expected(); }
  void announce(std::string_view path) override;
  void pass() override;

 private:
  /// The salt of a file whose key must still be derived.
  std::optional<FileSalt> new_salt_of(std::string_view path) const;

  std::string password_;
  KeysAhead keys_;
  std::deque<std::optional<FileSalt>> announced_;
};

}  // namespace engine::embedded
