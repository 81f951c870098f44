// A file handle that closes itself.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>

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

/// False where not all of it could be written.
inline bool write_all(HANDLE file, std::string_view content) {
  constexpr std::size_t block_size = std::size_t{1} << 20U;
  while (!content.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(content.size() < block_size ? content.size() : block_size);
    if (WriteFile(file, content.data(), size, &written, nullptr) == 0 || written == 0) return false;
    content.remove_prefix(written);
  }
  return true;
}

}  // namespace support
