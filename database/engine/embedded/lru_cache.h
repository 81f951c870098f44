// A cache of a fixed number of entries, found by a text. The entry that was not used for the longest time is dropped
// first.
#pragma once

#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace engine::embedded {

template <typename Entry>
class LruCache {
 public:
  explicit LruCache(std::size_t capacity) : capacity_(capacity) {}

  /// Null where there is no such entry. The pointer lives until the next put, take or clear.
  const Entry* find(std::string_view key) {
    const auto found = positions_.find(key);
    if (found == positions_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, found->second);
    return &found->second->second;
  }

  /// Moves the entry out of the cache.
  std::optional<Entry> take(std::string_view key) {
    const auto found = positions_.find(key);
    if (found == positions_.end()) return std::nullopt;
    std::optional<Entry> entry{std::move(found->second->second)};
    const auto position = found->second;
    positions_.erase(found);
    entries_.erase(position);
    return entry;
  }

  /// Stores the entry. It replaces an entry of the same key.
  const Entry& put(std::string_view key, Entry entry) {
    take(key);
    entries_.emplace_front(key, std::move(entry));
    positions_.emplace(entries_.front().first, entries_.begin());
    if (entries_.size() > capacity_) take(std::string(entries_.back().first));
    return entries_.front().second;
  }

  void clear() {
    positions_.clear();
    entries_.clear();
  }

 private:
  using Entries = std::list<std::pair<std::string, Entry>>;
  std::size_t capacity_;
  Entries entries_;
  std::unordered_map<std::string_view, typename Entries::iterator> positions_;  ///< keys point into entries_
};

}  // namespace engine::embedded
