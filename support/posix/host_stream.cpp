#include "support/host_stream.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "support/host_file.h"
#include "support/posix/descriptor.h"

namespace support {

namespace {

/// The lock shows everybody who finds the folder that its owner is alive.
bool lock_folder(const Descriptor& folder) { return folder && flock(folder.get(), LOCK_EX | LOCK_NB) == 0; }

int open_folder(const std::string& path) { return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }

}  // namespace

struct HostFileWriter::Handle {
  explicit Handle(int opened) : descriptor(opened) {}
  Descriptor descriptor;
};

HostFileWriter::HostFileWriter(const std::string& path) {
  constexpr int flags = O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC;
  auto handle = std::make_unique<Handle>(open(path.c_str(), flags, S_IRUSR | S_IWUSR));
  if (handle->descriptor) handle_ = std::move(handle);
}

HostFileWriter::~HostFileWriter() = default;

bool HostFileWriter::write(std::string_view bytes) { return handle_ && write_all(handle_->descriptor.get(), bytes); }

bool HostFileWriter::close() {
  const std::unique_ptr<Handle> handle = std::move(handle_);
  return handle && fsync(handle->descriptor.get()) == 0;
}

struct HostFileReader::Handle {
  explicit Handle(int opened) : descriptor(opened) {}
  Descriptor descriptor;
};

HostFileReader::HostFileReader(const std::string& path) {
  // O_NONBLOCK: a pipe without a writer would block us.
  auto handle = std::make_unique<Handle>(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  const bool regular = handle->descriptor && fstat(handle->descriptor.get(), &status) == 0 && S_ISREG(status.st_mode);
  if (regular) handle_ = std::move(handle);
}

HostFileReader::~HostFileReader() = default;

std::optional<std::size_t> HostFileReader::read(std::span<char> buffer) {
  for (;;) {
    const ssize_t count = handle_ ? ::read(handle_->descriptor.get(), buffer.data(), buffer.size()) : -1;
    if (count >= 0) return static_cast<std::size_t>(count);
    if (!handle_ || errno != EINTR) return std::nullopt;
  }
}

struct NewHostFolder::Handle {
  explicit Handle(int opened) : descriptor(opened) {}
  Descriptor descriptor;
};

NewHostFolder::NewHostFolder(std::string path) : path_(std::move(path)) {
  if (mkdir(path_.c_str(), S_IRWXU) != 0) return;
  handle_ = std::make_unique<Handle>(open_folder(path_));
  // A file system without locks gives none; the folder is then used without one.
  static_cast<void>(lock_folder(handle_->descriptor));
}

NewHostFolder::~NewHostFolder() = default;

bool NewHostFolder::take_name(const std::string& target) {
  const std::unique_ptr<Handle> handle = std::move(handle_);
  return handle && handle->descriptor && fsync(handle->descriptor.get()) == 0 && rename_host_file(path_, target);
}

bool is_host_folder_unused(const std::string& path) { return lock_folder(Descriptor(open_folder(path))); }

}  // namespace support
