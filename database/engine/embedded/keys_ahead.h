// Keys of files that will be opened soon, derived on all processors while the program works on the files before them.
//
// The threads derive keys and do nothing else: the library's derivation touches no memory but what it is given, so that
// SQLite, which is built for one thread, never sees them. All members but the derivation belong to the one thread that
// opens files.
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
  /// Waits for the keys that are being derived, and wipes all.
  ~KeysAhead();
  KeysAhead(const KeysAhead&) = delete;
  KeysAhead& operator=(const KeysAhead&) = delete;

  /// A file with this salt will be opened; several may share one.
  void expect(const FileSalt& salt);
  /// Done with one of those files: its key is wiped with the last of them.
  void pass(const FileSalt& salt) noexcept;
  /// As many files as are worth expecting at once: every processor has work, and few keys wait in memory.
  static std::size_t most_expected() noexcept;

  /// The key of an expected file into `key`, waited for where it is not there yet. False where nobody expects the file.
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
  /// With the lock held; it is given back while the key is derived.
  void derive(Slot& slot, std::unique_lock<std::mutex>& lock);
  void wait_for(Slot& slot, std::unique_lock<std::mutex>& lock);
  void wipe(Slots::iterator slot) noexcept;
  Slots::iterator slot_of(const FileSalt& salt);

  std::string password_;
  std::mutex mutex_;  ///< guards what follows
  std::condition_variable work_is_there_, key_is_ready_;
  Slots slots_;
  bool ending_ = false;
  std::vector<std::thread> threads_;
};

/// Openings of encrypted files prepared ahead: their salts are read, and their keys derived, before their turn.
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
  /// The salt of a file whose key is still to be derived.
  std::optional<FileSalt> new_salt_of(std::string_view path) const;

  std::string password_;
  KeysAhead keys_;
  std::deque<std::optional<FileSalt>> announced_;
};

}  // namespace engine::embedded
