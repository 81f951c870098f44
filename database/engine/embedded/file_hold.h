// A shared lock that every open handle of a database file holds for as long as it is open. (SQLite's own locks come and
// go with each statement.) A program that wants to put another file in this one's place learns by the lock whether
// anybody else has it open, in this process or another, under this name or another, and keeps everybody out meanwhile.
// The locked byte holds no data: it belongs to the page that SQLite leaves to its own locks.
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
  /// Waits while somebody keeps everybody out, then raises 3045. Holds nothing where the file cannot be opened or the
  /// system has no lock to give.
  FileHold(const std::string& host_path, std::chrono::milliseconds busy_time);
  ~FileHold();
  FileHold(const FileHold&) = delete;
  FileHold& operator=(const FileHold&) = delete;

  /// From now on nobody else can open the file. Returns false and changes nothing where somebody has it open.
  bool hold_alone();
  void let_others_in() noexcept;

 private:
  class Held;
  std::shared_ptr<Held> held_;
};

}  // namespace engine::embedded
