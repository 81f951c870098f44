// A file handle that closes itself, and retries for calls that fail because another program (a virus scanner, an
// indexer) has the file open for a moment.
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

/// False if not everything could be written.
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

/// Calls until the call returns true: up to ten times within a second and a half if the system says "access denied",
/// "sharing violation" or "lock violation", else once. The last error is that of the last call.
template <typename Call>
bool with_patience(Call call) {
  constexpr int most_calls = 10;
  constexpr DWORD wait_step = 30;
  for (DWORD made = 1;; ++made) {
    if (call()) return true;
    const DWORD reason = GetLastError();
    const bool may_pass =
        reason == ERROR_ACCESS_DENIED || reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION;
    if (!may_pass || made == most_calls) return false;
    Sleep(wait_step * made);
    SetLastError(reason);
  }
}

}  // namespace support
