#include "support/host_file.h"

#include <fmt/core.h>
#include <windows.h>
// sddl.h needs windows.h before it.
#include <sddl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/file_system.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace support {

namespace {

constexpr DWORD longest_wait = 5000;

[[noreturn]] void fail(const std::string& path, DWORD reason) {
  throw RuntimeError(error_number::path_file_access, fmt::format("Cannot write {}: error {}", path, reason));
}

bool is_read_only(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

/// Takes over the model's access rights and attributes, as far as we may.
void take_over_rights(const std::wstring& path, const std::wstring& model) {
  DWORD size = 0;
  GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> rights(size);
  if (size != 0 && GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) != 0) {
    SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data());
  }
  const DWORD attributes = GetFileAttributesW(model.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) SetFileAttributesW(path.c_str(), attributes);
}

class SystemCalls final : public ReplacementCalls {
 public:
  explicit SystemCalls(std::function<bool()> may_move = [] { return true; }) : may_move_(std::move(may_move)) {}
  bool replace(const std::string& source, const std::string& target) override {
    take_over_rights(wide_path(source), wide_path(target));
    return move(source, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  }
  bool rename(const std::string& source, const std::string& target) override {
    return move(source, target, MOVEFILE_WRITE_THROUGH);
  }
  bool exists(const std::string& path) const override { return host_file_exists(path); }
  void remove(const std::string& path) override {
    const std::wstring name = wide_path(path);
    with_patience([&] { return DeleteFileW(name.c_str()) != 0; });
  }
  DWORD reason() const noexcept { return reason_; }

 private:
  bool move(const std::string& source, const std::string& target, DWORD how) {
    const std::wstring from = wide_path(source), to = wide_path(target);
    const bool moved = with_patience([&] {
      if (may_move_()) return MoveFileExW(from.c_str(), to.c_str(), how) != 0;
      SetLastError(ERROR_OPERATION_ABORTED);
      return false;
    });
    if (!moved) reason_ = GetLastError();
    return moved;
  }
  std::function<bool()> may_move_;
  DWORD reason_ = 0;
};

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
  if (is_read_only(wide_path(path))) fail(path, ERROR_ACCESS_DENIED);
  const std::string temporary = working_path(path, replacement_mark);
  const std::wstring name = wide_path(temporary);
  FileHandle file(CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) fail(path, GetLastError());
  const bool written = write_all(file.get(), content) && FlushFileBuffers(file.get()) != 0;
  const DWORD reason = GetLastError();
  file.close();
  if (!written) {
    SystemCalls().remove(temporary);
    fail(path, reason);
  }
  replace_with_host_file(temporary, path);
}

bool rename_host_file(const std::string& source, const std::string& target) {
  return SystemCalls().rename(source, target);
}

bool sync_host_file(const std::string& path) {
  const std::wstring wide = wide_path(path);
  const DWORD attributes = GetFileAttributesW(wide.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return true;
  const FileHandle file(CreateFileW(wide.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
  return file && FlushFileBuffers(file.get()) != 0;
}

bool link_host_file(const std::string& path, const std::string& second_name) {
  return CreateHardLinkW(wide_path(second_name).c_str(), wide_path(path).c_str(), nullptr) != 0;
}

std::uint64_t host_file_names(const std::string& path) {
  constexpr DWORD anybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle file(CreateFileW(wide_path(path).c_str(), 0, anybody, nullptr, OPEN_EXISTING, 0, nullptr));
  BY_HANDLE_FILE_INFORMATION information{};
  if (!file || GetFileInformationByHandle(file.get(), &information) == 0) return 0;
  return information.nNumberOfLinks;
}

void replace_with_host_file(const std::string& source, const std::string& target,
                            const std::function<bool()>& may_replace) {
  SystemCalls calls{may_replace};
  // Replacing a file would bypass its write protection.
  if (is_read_only(wide_path(target))) {
    calls.remove(source);
    fail(target, ERROR_ACCESS_DENIED);
  }
  switch (put_in_place(calls, source, target)) {
    case Replaced::Done:
      return;
    case Replaced::Refused:
      fail(target, calls.reason());
    case Replaced::OnlySource:
      throw RuntimeError(error_number::path_file_access, "The system has lost " + target +
                                                             " while replacing it. What it was to hold is in " +
                                                             source + ": give that its name.");
  }
}

bool can_replace_host_file(const std::string& path) {
  const std::wstring file = wide_path(path);
  if (is_read_only(file)) return false;
  const std::string folder = narrow(file.substr(0, file.rfind(L'\\') + 1));
  return host_file_system().folder_exists(folder) && host_file_system().can_create_in(folder);
}

class HostFileLock::Held {
 public:
  explicit Held(const std::wstring& name) {
    // Every signed-in user may wait for the lock, and do nothing else with it.
    constexpr wchar_t rights[] = L"D:(A;;0x100001;;;AU)(A;;GA;;;OW)";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr);
    SECURITY_ATTRIBUTES attributes{sizeof attributes, descriptor, FALSE};
    mutex_ = CreateMutexExW(descriptor != nullptr ? &attributes : nullptr, name.c_str(), 0,
                            SYNCHRONIZE | MUTEX_MODIFY_STATE);
    LocalFree(descriptor);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() {
    if (owned_) ReleaseMutex(mutex_);
    if (mutex_ != nullptr) CloseHandle(mutex_);
  }
  /// Also true if there is no lock to take.
  bool take() {
    if (mutex_ == nullptr) return true;
    const DWORD result = WaitForSingleObject(mutex_, longest_wait);
    owned_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return owned_;
  }

 private:
  HANDLE mutex_ = nullptr;
  bool owned_ = false;
};

HostFileLock::HostFileLock(const std::string& path) {
  // The name is valid in all sessions of the machine: a terminal server has many. A second backslash would name a
  // session, so the path has none.
  std::wstring name = L"Global\\firststeps " + wide(to_lower(path));
  std::replace(name.begin() + 7, name.end(), L'\\', L'/');
  held_ = std::make_unique<Held>(name.substr(0, MAX_PATH));
  if (!held_->take()) {
    throw RuntimeError(error_number::permission_denied, "Cannot write " + path + ": another program is writing there");
  }
}

HostFileLock::~HostFileLock() = default;

bool is_on_other_computer(const std::string& path) {
  std::array<wchar_t, MAX_PATH> volume{};
  return GetVolumePathNameW(wide_path(path).c_str(), volume.data(), static_cast<DWORD>(volume.size())) != 0 &&
         GetDriveTypeW(volume.data()) == DRIVE_REMOTE;
}

bool is_host_file_unused(const std::string& path) {
  return static_cast<bool>(FileHandle(CreateFileW(wide_path(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

}  // namespace support
