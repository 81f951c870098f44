// The calls of the system beside SQLite's files that give a file its name. The linker puts these in their place.
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "tests/faults/fault_plan.h"
#include "tests/faults/fault_vfs.h"

namespace {

bool call_fails() {
  if (!faults::fails(faults::Operation::Other)) return false;
  errno = EIO;
  return true;
}

}  // namespace

extern "C" {

int __real_rename(const char* source, const char* target);
int __real_link(const char* source, const char* target);
int __real_renameat2(int source_folder, const char* source, int target_folder, const char* target, unsigned flags);

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

/// Only the plan's own power cuts ask what was synced: nothing has to wait for the disk.
int __wrap_fsync(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) faults::tell_synced_folder();
  return 0;
}

}  // extern "C"
