#include "database/engine/automation/automation_engine.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "database/engine/automation/automation_database.h"
#include "database/engine/automation/object.h"
#include "database/engine/engine_error.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace engine::automation {

using support::Variant;

namespace {

/// How many locks one file may have at a time. The engine's own limit is 9,500; a transaction that reaches the limit is
/// committed in parts.
constexpr std::int32_t max_locks_per_file_option = 62, max_locks_per_file = 5'000'000;

using SharedObjects = std::map<std::string, Object, std::less<>>;

std::weak_ptr<SharedObjects>& shared_objects() {
  static std::weak_ptr<SharedObjects> objects;
  return objects;
}

Object new_engine_object(std::string_view identifier) {
  if (!support::is_registered(identifier)) support::raise_not_installed(identifier);
  Object engine(identifier);
  try {
    engine.call(L"SetOption", Variant::of_long(max_locks_per_file_option), Variant::of_long(max_locks_per_file));
  } catch (const support::RuntimeError&) {
    // An engine without this option has the limit that the registry gives.
  }
  return engine;
}

Object engine_object(std::string_view identifier) {
  const auto shared = shared_objects().lock();
  if (!shared) return new_engine_object(identifier);
  auto found = shared->find(identifier);
  if (found == shared->end()) found = shared->emplace(identifier, new_engine_object(identifier)).first;
  return found->second;
}

class AutomationEngine : public Engine {
 public:
  explicit AutomationEngine(Object engine) : engine_(std::move(engine)) {}

  std::unique_ptr<Database> create_database(std::string_view path, std::string_view locale,
                                            std::int32_t version) override {
    Object space = workspace();
    Object database = space.object(Kind::Database, L"CreateDatabase", Variant::of_text(path), Variant::of_text(locale),
                                   Variant::of_long(version));
    return std::make_unique<AutomationDatabase>(engine_, std::move(space), std::move(database), path, "", OpenFile());
  }

  std::unique_ptr<Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                          std::string_view connect) override {
    const auto open = [exclusive, connect_text = std::string(connect)](const Object& space, std::string_view file,
                                                                       bool only_read) {
      return space.object(Kind::Database, L"OpenDatabase", Variant::of_text(file), Variant::of_flag(exclusive),
                          Variant::of_flag(only_read), Variant::of_text(connect_text));
    };
    Object space = workspace();
    Object database = open(space, path, read_only);
    return std::make_unique<AutomationDatabase>(engine_, std::move(space), std::move(database), path, connect,
                                                exclusive && !read_only ? OpenFile(open) : OpenFile());
  }

 private:
  /// A new workspace, of the user that every database without a security of its own has.
  Object workspace() const {
    return engine_.object(Kind::Workspace, L"CreateWorkspace", Variant::of_text("firststeps"),
                          Variant::of_text("admin"), Variant::of_text(""));
  }

  Object engine_;
};

}  // namespace

std::unique_ptr<Engine> create_automation_engine(std::string_view identifier) {
  return std::make_unique<AutomationEngine>(engine_object(identifier));
}

std::shared_ptr<void> share_objects() {
  auto objects = shared_objects().lock();
  if (!objects) {
    objects = std::make_shared<SharedObjects>();
    shared_objects() = objects;
  }
  return objects;
}

namespace {

using support::FileHandle;

constexpr DWORD chunk_size = 1 << 20;

struct FailureRow {
  DWORD failure;
  error_number::Number number;
};

constexpr FailureRow failures[] = {
    {ERROR_SHARING_VIOLATION, error_number::file_in_use}, {ERROR_LOCK_VIOLATION, error_number::file_in_use},
    {ERROR_FILE_EXISTS, error_number::database_exists},   {ERROR_ALREADY_EXISTS, error_number::database_exists},
    {ERROR_PATH_NOT_FOUND, error_number::invalid_path},   {ERROR_INVALID_NAME, error_number::invalid_path},
    {ERROR_ACCESS_DENIED, error_number::file_not_opened},
};

/// Raises the engine's number for the system's last error; 3043 where the table lacks it.
void check(bool done) {
  if (done) return;
  const auto* row = std::ranges::find(failures, GetLastError(), &FailureRow::failure);
  raise(row != std::end(failures) ? row->number : error_number::disk_error);
}

void copy_content(HANDLE source, HANDLE target) {
  std::vector<char> chunk(chunk_size);
  for (;;) {
    DWORD read = 0, written = 0;
    check(ReadFile(source, chunk.data(), chunk_size, &read, nullptr) != 0);
    if (read == 0) break;
    check(WriteFile(target, chunk.data(), read, &written, nullptr) != 0 && written == read);
  }
  check(FlushFileBuffers(target) != 0);
}

}  // namespace

void copy_database_file(std::string_view source, std::string_view target) {
  // Others may only read meanwhile. If somebody writes, this opening is refused.
  const FileHandle from(CreateFileW(support::wide_path(source).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  check(static_cast<bool>(from));
  const std::wstring target_path = support::wide_path(target);
  FileHandle to(
      CreateFileW(target_path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  check(static_cast<bool>(to));
  try {
    copy_content(from.get(), to.get());
  } catch (const support::RuntimeError&) {
    to.close();
    DeleteFileW(target_path.c_str());
    throw;
  }
}

}  // namespace engine::automation
