#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/engine_error.h"

namespace engine::embedded {

void create_private_file(const std::string& host_path) {
  const int file = open(host_path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file >= 0) {
    close(file);
    return;
  }
  if (errno == EEXIST) raise(3204);
  if (errno == ENOENT || errno == ENOTDIR) raise(3044);
  raise(3051);
}

}  // namespace engine::embedded
