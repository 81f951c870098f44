#include "support/host_stream.h"

#include <windows.h>

#include <utility>

#include "support/host_file.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace support {

namespace {

/// While this handle is open, nobody can open the folder without sharing it.
HANDLE open_folder(const std::string& path, DWORD sharing) {
  return CreateFileW(wide_path(path).c_str(), FILE_LIST_DIRECTORY, sharing, nullptr, OPEN_EXISTING,
                     FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

}  // namespace

struct HostFileWriter::Handle {
  explicit Handle(HANDLE opened) : file(opened) {}
  FileHandle file;
};

HostFileWriter::HostFileWriter(const std::string& path) {
  const HANDLE file =
      CreateFileW(wide_path(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) handle_ = std::make_unique<Handle>(file);
}

HostFileWriter::~HostFileWriter() = default;

bool HostFileWriter::write(std::string_view bytes) { return handle_ && write_all(handle_->file.get(), bytes); }

bool HostFileWriter::close() {
  const std::unique_ptr<Handle> handle = std::move(handle_);
  return handle && FlushFileBuffers(handle->file.get()) != 0;
}

struct HostFileReader::Handle {
  explicit Handle(HANDLE opened) : file(opened) {}
  FileHandle file;
};

HostFileReader::HostFileReader(const std::string& path) {
  const HANDLE file =
      CreateFileW(wide_path(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  handle_ = std::make_unique<Handle>(file);
  if (GetFileType(file) != FILE_TYPE_DISK) handle_.reset();
}

HostFileReader::~HostFileReader() = default;

std::optional<std::size_t> HostFileReader::read(std::span<char> buffer) {
  DWORD count = 0;
  const auto size = static_cast<DWORD>(buffer.size());
  if (!handle_ || ReadFile(handle_->file.get(), buffer.data(), size, &count, nullptr) == 0) return std::nullopt;
  return count;
}

struct NewHostFolder::Handle {
  explicit Handle(HANDLE opened) : folder(opened) {}
  FileHandle folder;
};

NewHostFolder::NewHostFolder(std::string path) : path_(std::move(path)) {
  if (CreateDirectoryW(wide_path(path_).c_str(), nullptr) == 0) return;
  handle_ = std::make_unique<Handle>(open_folder(path_, FILE_SHARE_READ | FILE_SHARE_WRITE));
}

NewHostFolder::~NewHostFolder() = default;

// The system does not tell when the folder's own entries are on the disk.
bool NewHostFolder::take_name(const std::string& target) {
  if (!handle_) return false;
  // A folder that is open cannot be renamed.
  handle_.reset();
  return rename_host_file(path_, target);
}

bool is_host_folder_unused(const std::string& path) { return static_cast<bool>(FileHandle(open_folder(path, 0))); }

}  // namespace support
