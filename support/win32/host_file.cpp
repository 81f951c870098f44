#include "support/host_file.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace support {

namespace {

constexpr DWORD longest_wait = 5000;

[[noreturn]] void fail(const std::string& path, DWORD reason) {
  throw RuntimeError(error_number::path_file_access, "Cannot write " + path + ": error " + std::to_string(reason));
}

/// A new file beside the one that is to be replaced.
std::wstring temporary_name(const std::wstring& path) {
  return path + wide(replacement_mark) + std::to_wstring(GetCurrentProcessId()) + L"-" +
         std::to_wstring(GetTickCount64());
}

bool write_all(HANDLE file, std::string_view content) {
  constexpr std::size_t block_size = std::size_t{1} << 20U;
  while (!content.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(content.size(), block_size));
    if (WriteFile(file, content.data(), size, &written, nullptr) == 0 || written == 0) return false;
    content.remove_prefix(written);
  }
  return FlushFileBuffers(file) != 0;
}

/// An existing file is replaced with its access rights and attributes; a new one is moved into place.
bool put_in_place(const std::wstring& temporary, const std::wstring& path) {
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
    return MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
  }
  return ReplaceFileW(path.c_str(), temporary.c_str(), nullptr, 0, nullptr, nullptr) != 0;
}

}  // namespace

std::optional<std::string> read_host_file(const std::string& path, std::uint64_t limit) {
  const FileHandle file(CreateFileW(wide_path(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size{};
  if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || GetFileSizeEx(file.get(), &size) == 0) return std::nullopt;
  if (static_cast<std::uint64_t>(size.QuadPart) > limit) return std::nullopt;
  std::string content;
  std::array<char, 65536> block{};
  for (;;) {
    DWORD count = 0;
    if (ReadFile(file.get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) == 0) return std::nullopt;
    if (count == 0) return content;
    if (content.size() + count > limit) return std::nullopt;
    content.append(block.data(), count);
  }
}

bool host_file_exists(const std::string& path) {
  if (GetFileAttributesW(wide_path(path).c_str()) != INVALID_FILE_ATTRIBUTES) return true;
  const DWORD reason = GetLastError();
  return reason != ERROR_FILE_NOT_FOUND && reason != ERROR_PATH_NOT_FOUND;
}

void replace_host_file(const std::string& path, std::string_view content) {
  const std::wstring target = wide_path(path);
  const DWORD attributes = GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    fail(path, ERROR_ACCESS_DENIED);
  }
  const std::wstring temporary = temporary_name(target);
  FileHandle file(
      CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) fail(path, GetLastError());
  const bool written = write_all(file.get(), content);
  DWORD reason = GetLastError();
  file.close();
  if (written && put_in_place(temporary, target)) return;
  if (written) reason = GetLastError();
  DeleteFileW(temporary.c_str());
  fail(path, reason);
}

class HostFileLock::Held {
 public:
  explicit Held(const std::wstring& name) : mutex_(CreateMutexW(nullptr, FALSE, name.c_str())) {}
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() {
    if (owned_) ReleaseMutex(mutex_);
    if (mutex_ != nullptr) CloseHandle(mutex_);
  }
  /// True also where there is no lock to be had.
  bool take() {
    if (mutex_ == nullptr) return true;
    const DWORD result = WaitForSingleObject(mutex_, longest_wait);
    owned_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return owned_;
  }

 private:
  HANDLE mutex_;
  bool owned_ = false;
};

HostFileLock::HostFileLock(const std::string& path) {
  // A backslash would name a session.
  std::wstring name = L"Local\\firststeps " + wide(to_lower(path));
  std::replace(name.begin() + 6, name.end(), L'\\', L'/');
  held_ = std::make_unique<Held>(name.substr(0, MAX_PATH));
  if (!held_->take()) {
    throw RuntimeError(error_number::permission_denied, "Cannot write " + path + ": another program is writing there");
  }
}

HostFileLock::~HostFileLock() = default;

bool is_host_file_unused(const std::string& path) {
  return static_cast<bool>(FileHandle(CreateFileW(wide_path(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

}  // namespace support
