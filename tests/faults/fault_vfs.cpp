#include "tests/faults/fault_vfs.h"

#include <sqlite3.h>
#include <unistd.h>

#include <new>
#include <stdexcept>
#include <string>

#include "tests/faults/fault_plan.h"
#include "tests/faults/unsynced_files.h"

namespace faults {
namespace {

UnsyncedFiles& unsynced() {
  static UnsyncedFiles files;
  return files;
}

/// True if it matters what is synced and what is not.
bool tracks() {
  const Fault fault = FaultPlan::current().fault();
  return fault == Fault::PowerCut || fault == Fault::TornPowerCut;
}

/// Calls that SQLite's own file system makes do not count as ours.
int calls_of_sqlite = 0;
struct CallOfSqlite {
  CallOfSqlite() { ++calls_of_sqlite; }
  ~CallOfSqlite() { --calls_of_sqlite; }
};

/// In memory, the file of the machine's own VFS follows directly behind.
struct FaultFile {
  sqlite3_file base;
  std::string* path;

  sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

FaultFile& fault_file(sqlite3_file* file) { return *reinterpret_cast<FaultFile*>(file); }
sqlite3_file* real(sqlite3_file* file) { return fault_file(file).real(); }
const sqlite3_io_methods& methods(sqlite3_file* file) { return *real(file)->pMethods; }

int close_file(sqlite3_file* file) {
  delete fault_file(file).path;
  return methods(file).xClose(real(file));
}

int read_file(sqlite3_file* file, void* bytes, int count, sqlite3_int64 offset) {
  if (fails(Operation::Read)) return SQLITE_IOERR_READ;
  const CallOfSqlite call;
  return methods(file).xRead(real(file), bytes, count, offset);
}

int write_file(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
  const CallOfSqlite call;
  switch (FaultPlan::current().meet(Operation::Write)) {
    case Verdict::Fail:
      return SQLITE_IOERR_WRITE;
    case Verdict::Full:
      return SQLITE_FULL;
    case Verdict::Shorten:
      methods(file).xWrite(real(file), bytes, count / 2, offset);
      return SQLITE_IOERR_WRITE;
    case Verdict::Proceed:
      break;
  }
  if (tracks()) {
    unsynced().written(*fault_file(file).path, offset,
                       {static_cast<const char*>(bytes), static_cast<std::size_t>(count)});
  }
  return methods(file).xWrite(real(file), bytes, count, offset);
}

int truncate_file(sqlite3_file* file, sqlite3_int64 size) {
  if (fails(Operation::Other)) return SQLITE_IOERR_TRUNCATE;
  if (tracks()) unsynced().truncated(*fault_file(file).path, size);
  return methods(file).xTruncate(real(file), size);
}

int sync_file(sqlite3_file* file, int) {
  if (fails(Operation::Other)) return SQLITE_IOERR_FSYNC;
  // Only the plan's power cuts ask what was synced, so nothing waits for the disk.
  if (tracks()) unsynced().synced(*fault_file(file).path);
  return SQLITE_OK;
}

int size_of_file(sqlite3_file* file, sqlite3_int64* size) { return methods(file).xFileSize(real(file), size); }
int lock_file(sqlite3_file* file, int level) { return methods(file).xLock(real(file), level); }
int unlock_file(sqlite3_file* file, int level) { return methods(file).xUnlock(real(file), level); }
int is_reserved(sqlite3_file* file, int* answer) { return methods(file).xCheckReservedLock(real(file), answer); }
int control_file(sqlite3_file* file, int operation, void* argument) {
  return methods(file).xFileControl(real(file), operation, argument);
}
int sector_size(sqlite3_file* file) { return methods(file).xSectorSize(real(file)); }
/// The simplest of disks: it promises nothing about the order of writes, or about what an interrupted write leaves.
int characteristics(sqlite3_file*) { return 0; }

constexpr sqlite3_io_methods fault_methods = {
    .iVersion = 1,
    .xClose = close_file,
    .xRead = read_file,
    .xWrite = write_file,
    .xTruncate = truncate_file,
    .xSync = sync_file,
    .xFileSize = size_of_file,
    .xLock = lock_file,
    .xUnlock = unlock_file,
    .xCheckReservedLock = is_reserved,
    .xFileControl = control_file,
    .xSectorSize = sector_size,
    .xDeviceCharacteristics = characteristics,
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

sqlite3_vfs& machine_vfs(sqlite3_vfs* vfs) { return *static_cast<sqlite3_vfs*>(vfs->pAppData); }

int open_file(sqlite3_vfs* vfs, sqlite3_filename name, sqlite3_file* file, int flags, int* out_flags) {
  file->pMethods = nullptr;
  const bool existed = name != nullptr && access(name, F_OK) == 0;
  if (fails(existed ? Operation::Read : Operation::Other)) return SQLITE_CANTOPEN;
  const CallOfSqlite call;
  sqlite3_file* machine_file = real(file);
  const int result = machine_vfs(vfs).xOpen(&machine_vfs(vfs), name, machine_file, flags, out_flags);
  if (machine_file->pMethods == nullptr) return result;
  fault_file(file).path = new std::string(name != nullptr ? name : "");
  file->pMethods = &fault_methods;
  if (tracks() && name != nullptr) unsynced().opened(name, existed);
  return result;
}

int delete_file(sqlite3_vfs* vfs, const char* name, int sync_folder) {
  if (fails(Operation::Other)) return SQLITE_IOERR_DELETE;
  if (tracks()) unsynced().removed(name);
  const CallOfSqlite call;
  return machine_vfs(vfs).xDelete(&machine_vfs(vfs), name, sync_folder);
}

int access_file(sqlite3_vfs* vfs, const char* name, int flags, int* answer) {
  if (fails(Operation::Read)) return SQLITE_IOERR_ACCESS;
  return machine_vfs(vfs).xAccess(&machine_vfs(vfs), name, flags, answer);
}

int full_path(sqlite3_vfs* vfs, const char* name, int size, char* path) {
  return machine_vfs(vfs).xFullPathname(&machine_vfs(vfs), name, size, path);
}
int randomness(sqlite3_vfs* vfs, int size, char* bytes) {
  return machine_vfs(vfs).xRandomness(&machine_vfs(vfs), size, bytes);
}
int sleep_for(sqlite3_vfs* vfs, int microseconds) { return machine_vfs(vfs).xSleep(&machine_vfs(vfs), microseconds); }
int current_time(sqlite3_vfs* vfs, double* time) { return machine_vfs(vfs).xCurrentTime(&machine_vfs(vfs), time); }
int last_error(sqlite3_vfs* vfs, int size, char* text) {
  return machine_vfs(vfs).xGetLastError(&machine_vfs(vfs), size, text);
}

}  // namespace

void forget_unsynced() { unsynced().forget(); }

bool is_call_of_sqlite() { return calls_of_sqlite > 0; }

void tell_created(const std::string& path) {
  if (tracks()) unsynced().opened(path, false);
}

void tell_written(const std::string& path, std::int64_t offset, std::string_view bytes) {
  if (tracks()) unsynced().written(path, offset, bytes);
}

void tell_synced(const std::string& path) {
  if (tracks()) unsynced().synced(path);
}

void tell_rename(const char* source, const char* target) {
  if (tracks()) unsynced().renamed(source, target);
}

void tell_synced_folder() {
  if (tracks()) unsynced().folder_synced();
}

void install_fault_vfs() {
  static sqlite3_vfs vfs{};
  if (vfs.zName != nullptr) return;
  sqlite3_vfs* machine = sqlite3_vfs_find("unix");
  if (machine == nullptr) throw std::runtime_error("SQLite has no file system named unix");
  vfs.iVersion = 1;
  vfs.szOsFile = static_cast<int>(sizeof(FaultFile)) + machine->szOsFile;
  vfs.mxPathname = machine->mxPathname;
  vfs.zName = "fault";
  vfs.pAppData = machine;
  vfs.xOpen = open_file;
  vfs.xDelete = delete_file;
  vfs.xAccess = access_file;
  vfs.xFullPathname = full_path;
  vfs.xRandomness = randomness;
  vfs.xSleep = sleep_for;
  vfs.xCurrentTime = current_time;
  vfs.xGetLastError = last_error;
  FaultPlan::current().lose_unsynced = [] {
    const FaultPlan& plan = FaultPlan::current();
    unsynced().cut(plan.fault() == Fault::TornPowerCut, static_cast<unsigned>(plan.at()));
  };
  if (sqlite3_vfs_register(&vfs, 0) != SQLITE_OK || sqlite3mc_vfs_create("fault", 1) != SQLITE_OK) {
    throw std::runtime_error("the file system with faults cannot be installed");
  }
}

}  // namespace faults
