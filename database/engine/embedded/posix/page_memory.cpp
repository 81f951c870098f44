#include "database/engine/embedded/page_memory.h"

#include <sqlite3.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

namespace engine::embedded {
namespace {

/// A sanitizer looks for writes beyond the end of each page, if each has memory of its own.
#ifdef FIRSTSTEPS_SANITIZED
constexpr bool one_by_one = true;
#else
constexpr bool one_by_one = false;
#endif

/// What the system provides in one go.
constexpr std::size_t piece_bytes = 2 << 20;
/// Address space for the pages of two large files. Only what is used becomes memory.
constexpr std::size_t region_bytes = 256 << 20;
/// A page of 4 KiB with what SQLite notes of it is larger than the one and not larger than the other.
constexpr int page_bytes = 4096, slot_bytes = 4608;

/// Slots of one size, one behind the other. A slot that was given back is used again; when all are back, their memory
/// goes to the system, except the first piece, which serves the next small file.
class Slots {
 public:
  bool reserve() noexcept {
    void* const memory = mmap(nullptr, region_bytes + piece_bytes, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) return false;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    begin_ = unused_ = static_cast<std::byte*>(memory) + (piece_bytes - address % piece_bytes) % piece_bytes;
    madvise(begin_, region_bytes, MADV_HUGEPAGE);
    return true;
  }

  bool contains(const void* memory) const noexcept {
    return reinterpret_cast<std::uintptr_t>(memory) - reinterpret_cast<std::uintptr_t>(begin_) < region_bytes;
  }

  /// Nothing if all slots are taken.
  void* take() noexcept {
    void* slot = free_;
    if (free_ != nullptr) {
      free_ = free_->next;
    } else if (begin_ + region_bytes - unused_ >= slot_bytes) {
      slot = unused_;
      unused_ += slot_bytes;
    }
    taken_ += slot != nullptr ? 1 : 0;
    return slot;
  }

  void give_back(void* slot) noexcept {
    free_ = new (slot) FreeSlot{free_};
    if (--taken_ == 0) release();
  }

 private:
  struct FreeSlot {
    FreeSlot* next;
  };

  void release() noexcept {
    const auto used = static_cast<std::size_t>(unused_ - begin_);
    if (used > piece_bytes) madvise(begin_ + piece_bytes, used - piece_bytes, MADV_DONTNEED);
    unused_ = begin_;
    free_ = nullptr;
  }

  std::byte* begin_ = nullptr;
  /// Where the slots begin that were never taken since the last release.
  std::byte* unused_ = nullptr;
  FreeSlot* free_ = nullptr;
  std::size_t taken_ = 0;
};

Slots slots;
/// SQLite's own, for everything that is no page.
sqlite3_mem_methods plain;

void* allocate(int bytes) {
  void* const slot = bytes > page_bytes && bytes <= slot_bytes ? slots.take() : nullptr;
  return slot != nullptr ? slot : plain.xMalloc(bytes);
}

void release(void* memory) {
  if (slots.contains(memory)) {
    slots.give_back(memory);
  } else {
    plain.xFree(memory);
  }
}

int size_of(void* memory) { return slots.contains(memory) ? slot_bytes : plain.xSize(memory); }

void* resize(void* memory, int bytes) {
  if (!slots.contains(memory)) return plain.xRealloc(memory, bytes);
  if (bytes <= slot_bytes) return memory;
  void* const larger = plain.xMalloc(bytes);
  if (larger == nullptr) return nullptr;
  std::memcpy(larger, memory, slot_bytes);
  slots.give_back(memory);
  return larger;
}

}  // namespace

void keep_pages_together() noexcept {
  static bool done = false;
  if (done || one_by_one) return;
  done = true;
  if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &plain) != SQLITE_OK || !slots.reserve()) return;
  sqlite3_mem_methods methods = plain;
  methods.xMalloc = allocate;
  methods.xFree = release;
  methods.xSize = size_of;
  methods.xRealloc = resize;
  sqlite3_config(SQLITE_CONFIG_MALLOC, &methods);
}

}  // namespace engine::embedded
