#include "support/posix/folder.h"

#include <fcntl.h>
#include <unistd.h>

#include "support/posix/descriptor.h"

namespace support {

std::string folder_of(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

void sync_folder_of(const std::string& path) {
  const Descriptor folder(open(folder_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) fsync(folder.get());
}

}  // namespace support
