// What every open handle of a database file has beside SQLite's locks, which come and go with each statement: a shared
// lock for as long as it is open. Who is to put another file in this one's place finds by it that nobody else has it
// open, in this process or another, under this name or another, and keeps everybody out meanwhile. No data lies where
// the lock is: it is a byte of the page that SQLite leaves to its own locks.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace engine::embedded {

inline constexpr std::int64_t held_byte = 0x40000000 + 512;

class FileHold {
 public:
  /// Holds nothing.
  FileHold() noexcept;
  /// Waits for who keeps everybody out, then raises 3045. Nothing is held of a file that cannot be opened, or where the
  /// system has no lock to give.
  FileHold(const std::string& host_path, std::chrono::milliseconds busy_time);
  ~FileHold();
  FileHold(const FileHold&) = delete;
  FileHold& operator=(const FileHold&) = delete;

  /// From here on nobody else opens the file. False, and nothing changed, where somebody has it open.
  bool hold_alone();
  void let_others_in() noexcept;

 private:
  class Held;
  std::shared_ptr<Held> held_;
};

}  // namespace engine::embedded
