// A file handle that closes itself.
#pragma once

#include <windows.h>

namespace support {

class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) noexcept : handle_(handle) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() { close(); }

  explicit operator bool() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const noexcept { return handle_; }
  void close() noexcept {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_;
};

}  // namespace support
