#include "database/engine/embedded/platform_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "database/engine/engine_error.h"
#include "support/host_file.h"
#include "support/posix/descriptor.h"

namespace engine::embedded {

namespace {

using support::Descriptor;

/// The owner of the folder can put another file in the place of ours. The system's administrator can do that anywhere.
bool is_folder_of_another_user(const Descriptor& folder) {
  struct stat status {};
  if (fstat(folder.get(), &status) != 0) return true;
  return status.st_uid != geteuid() && status.st_uid != 0;
}

}  // namespace

void create_private_file(const std::string& host_path) {
  const auto name = host_path.rfind('/') + 1;
  const std::string folder_path = name == 0 ? "." : host_path.substr(0, name);
  const Descriptor folder(open(folder_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder && is_folder_of_another_user(folder)) {
    throw support::RuntimeError(error_number::file_not_opened,
                                "The database file cannot be created: its folder belongs to another user.");
  }
  constexpr int flags = O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC;
  const Descriptor file(folder ? openat(folder.get(), host_path.c_str() + name, flags, S_IRUSR | S_IWUSR) : -1);
  if (file) return;
  if (errno == EEXIST) raise(error_number::database_exists);
  if (errno == ENOENT || errno == ENOTDIR) raise(error_number::invalid_path);
  if (errno == EACCES || errno == EPERM || errno == EROFS) {
    throw support::RuntimeError(error_number::file_not_opened,
                                "The database file cannot be created: its folder cannot be written to.");
  }
  raise(error_number::file_not_opened);
}

void empty_file_for_good(const char*) noexcept {}

// A process that waits to open the old file finds that its name belongs to another file now.
void replace_held_file(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target) {
  support::replace_with_host_file(source, target);
  held.reset();
}

}  // namespace engine::embedded
