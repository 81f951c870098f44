// The file calls of Windows.
#include "support/file_system.h"

#include <windows.h>

#include <algorithm>
#include <memory>

#include "support/host_file.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace support {

namespace {

struct CloseSearch {
  using pointer = HANDLE;
  void operator()(HANDLE search) const noexcept { FindClose(search); }
};

bool is_folder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

bool folder_exists_at(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && is_folder(attributes);
}

bool create_folder_at(std::wstring path) {
  while (path.size() > 3 && path.ends_with(L'\\')) path.pop_back();
  if (path.empty() || folder_exists_at(path)) return !path.empty();
  const auto slash = path.rfind(L'\\');
  if (slash != std::wstring::npos && slash > 2) create_folder_at(path.substr(0, slash));
  return CreateDirectoryW(path.c_str(), nullptr) != 0 || folder_exists_at(path);
}

/// The folder itself or the nearest existing one above it.
std::wstring existing_folder(std::wstring path) {
  if (path.empty()) return L".";
  while (true) {
    // With a backslash behind its name, the system does not find a file.
    while (path.ends_with(L'\\') && path.size() > 3) path.pop_back();
    const auto slash = path.rfind(L'\\');
    const bool is_root = slash == std::wstring::npos || slash + 1 == path.size();
    if (is_root || GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return path;
    path.resize(slash + 1);
  }
}

/// True if the file or folder opens with these rights; it is closed at once.
bool opens_with(const std::wstring& path, DWORD rights) {
  constexpr DWORD anybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return static_cast<bool>(FileHandle(
      CreateFileW(path.c_str(), rights, anybody, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)));
}

/// True for a medium that cannot be written, whatever the access rights say.
bool is_read_only_volume(const std::wstring& path) {
  std::wstring root(MAX_PATH, L'\0');
  DWORD flags = 0;
  return GetVolumePathNameW(path.c_str(), root.data(), static_cast<DWORD>(root.size())) != 0 &&
         GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) != 0 &&
         (flags & FILE_READ_ONLY_VOLUME) != 0;
}

class Win32FileSystem final : public FileSystem {
 public:
  std::optional<std::uint64_t> file_size(std::string_view path) const override;
  bool folder_exists(std::string_view path) const override;
  bool create_folder(std::string_view path) override;
  std::vector<std::string> files(std::string_view folder, std::string_view pattern) const override;
  std::optional<std::string> read(std::string_view path, std::uint64_t limit) const override;
  bool rename_without_replacing(std::string_view source, std::string_view target) override;
  bool remove(std::string_view path) override;
  bool can_create_in(std::string_view folder) const override;
  bool can_write(std::string_view path) const override;
  std::optional<std::uint64_t> free_space(std::string_view folder) const override;
  std::string host_path(std::string_view path) const override { return std::string(path); }
  std::string windows_path(std::string_view host_path) const override;
};

}  // namespace

std::optional<std::uint64_t> Win32FileSystem::file_size(std::string_view path) const {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(wide_path(path).c_str(), GetFileExInfoStandard, &data) == 0) return std::nullopt;
  if (is_folder(data.dwFileAttributes)) return std::nullopt;
  return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32U) | data.nFileSizeLow;
}

bool Win32FileSystem::folder_exists(std::string_view path) const { return folder_exists_at(wide_path(path)); }

bool Win32FileSystem::create_folder(std::string_view path) { return create_folder_at(wide_path(path)); }

// Our own matching is used, because the system's also matches the short names that it keeps beside the long ones.
std::vector<std::string> Win32FileSystem::files(std::string_view folder, std::string_view pattern) const {
  std::vector<std::string> names;
  std::wstring search = wide_path(folder.empty() ? "." : folder);
  if (search.empty()) return names;
  search += search.ends_with(L'\\') ? L"*" : L"\\*";
  WIN32_FIND_DATAW found{};
  const HANDLE handle = FindFirstFileW(search.c_str(), &found);
  if (handle == INVALID_HANDLE_VALUE) return names;
  const std::unique_ptr<void, CloseSearch> closer(handle);
  do {
    std::string name = narrow(static_cast<const wchar_t*>(found.cFileName));
    if (!is_folder(found.dwFileAttributes) && matches_pattern(name, pattern)) names.push_back(std::move(name));
  } while (FindNextFileW(handle, &found) != 0);
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<std::string> Win32FileSystem::read(std::string_view path, std::uint64_t limit) const {
  return read_host_file(std::string(path), limit);
}

bool Win32FileSystem::rename_without_replacing(std::string_view source, std::string_view target) {
  return rename_host_file(std::string(source), std::string(target));
}

bool Win32FileSystem::remove(std::string_view path) {
  const std::wstring name = wide_path(path);
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || is_folder(attributes)) return false;
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return DeleteFileW(name.c_str()) != 0;
  return with_patience([&] { return DeleteFileW(name.c_str()) != 0; });
}

bool Win32FileSystem::can_create_in(std::string_view folder) const {
  const std::wstring existing = existing_folder(wide_path(folder));
  // The attribute "read only" does not protect a folder.
  return folder_exists_at(existing) && opens_with(existing, FILE_ADD_FILE) && !is_read_only_volume(existing);
}

bool Win32FileSystem::can_write(std::string_view path) const {
  const std::wstring file = wide_path(path);
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || is_folder(attributes)) return false;
  return (attributes & FILE_ATTRIBUTE_READONLY) == 0 && opens_with(file, FILE_WRITE_DATA) && !is_read_only_volume(file);
}

std::optional<std::uint64_t> Win32FileSystem::free_space(std::string_view folder) const {
  ULARGE_INTEGER bytes{};
  if (GetDiskFreeSpaceExW(existing_folder(wide_path(folder)).c_str(), &bytes, nullptr, nullptr) == 0)
    return std::nullopt;
  return bytes.QuadPart;
}

std::string Win32FileSystem::windows_path(std::string_view host_path) const { return narrow(wide_path(host_path)); }

FileSystem& host_file_system() {
  static Win32FileSystem files;
  return files;
}

}  // namespace support
