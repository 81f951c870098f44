// System calls that write a file which is not SQLite's, or give it its name. The linker puts these functions in their
// place.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "tests/faults/fault_plan.h"
#include "tests/faults/fault_vfs.h"

namespace {

using faults::Operation;
using faults::Verdict;

bool call_fails(Operation operation = Operation::Other) {
  if (faults::is_call_of_sqlite() || !faults::fails(operation)) return false;
  errno = EIO;
  return true;
}

bool is_of_type(int descriptor, mode_t type) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && (status.st_mode & S_IFMT) == type;
}

std::string path_of(int descriptor) {
  std::array<char, PATH_MAX> path{};
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t size = readlink(link.c_str(), path.data(), path.size());
  return size > 0 ? std::string(path.data(), static_cast<std::size_t>(size)) : std::string();
}

}  // namespace

extern "C" {

int __real_rename(const char* source, const char* target);
int __real_link(const char* source, const char* target);
int __real_renameat2(int source_folder, const char* source, int target_folder, const char* target, unsigned flags);
int __real_mkdir(const char* path, mode_t rights);
int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int descriptor, const void* bytes, std::size_t count);
ssize_t __real_read(int descriptor, void* bytes, std::size_t count);

int __wrap_rename(const char* source, const char* target) {
  if (call_fails()) return -1;
  faults::tell_rename(source, target);
  return __real_rename(source, target);
}

int __wrap_link(const char* source, const char* target) { return call_fails() ? -1 : __real_link(source, target); }

int __wrap_renameat2(int source_folder, const char* source, int target_folder, const char* target, unsigned flags) {
  if (call_fails()) return -1;
  if (faccessat(target_folder, target, F_OK, 0) == 0) {
    errno = EEXIST;
    return -1;
  }
  faults::tell_rename(source, target);
  return __real_renameat2(source_folder, source, target_folder, target, flags);
}

int __wrap_mkdir(const char* path, mode_t rights) { return call_fails() ? -1 : __real_mkdir(path, rights); }

int __wrap_open(const char* path, int flags, ...) {
  mode_t rights = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    rights = va_arg(arguments, mode_t);
    va_end(arguments);
    if (call_fails()) return -1;
  }
  const int descriptor = __real_open(path, flags, rights);
  if ((flags & O_EXCL) != 0 && descriptor >= 0 && !faults::is_call_of_sqlite()) faults::tell_created(path);
  return descriptor;
}

ssize_t __wrap_write(int descriptor, const void* bytes, std::size_t count) {
  if (faults::is_call_of_sqlite() || !is_of_type(descriptor, S_IFREG)) return __real_write(descriptor, bytes, count);
  const Verdict verdict = faults::FaultPlan::current().meet(Operation::Write);
  if (verdict == Verdict::Shorten) static_cast<void>(__real_write(descriptor, bytes, count / 2));
  if (verdict != Verdict::Proceed) {
    errno = verdict == Verdict::Full ? ENOSPC : EIO;
    return -1;
  }
  faults::tell_written(path_of(descriptor), lseek(descriptor, 0, SEEK_CUR), {static_cast<const char*>(bytes), count});
  return __real_write(descriptor, bytes, count);
}

/// Besides SQLite's files, only the tables that an export has written are read.
ssize_t __wrap_read(int descriptor, void* bytes, std::size_t count) {
  if (path_of(descriptor).ends_with(".csv") && call_fails(Operation::Read)) return -1;
  return __real_read(descriptor, bytes, count);
}

/// Only the plan's power cuts ask what was synced, so nothing waits for the disk.
int __wrap_fsync(int descriptor) {
  if (is_of_type(descriptor, S_IFDIR)) {
    faults::tell_synced_folder();
  } else if (!faults::is_call_of_sqlite()) {
    if (call_fails()) return -1;
    faults::tell_synced(path_of(descriptor));
  }
  return 0;
}

}  // extern "C"
