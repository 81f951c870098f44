#include "support/virtual_store.h"

#include "support/windows_path.h"

namespace support {

std::string virtual_store_twin(const FileSystem& files, std::string_view local_data, std::string_view folder) {
  constexpr std::size_t drive = 2;
  const bool on_drive = folder.size() > drive && folder[1] == ':' && folder[drive] == '\\';
  if (local_data.empty() || !on_drive) return {};
  std::string twin = std::string(local_data) + "\\VirtualStore" + std::string(folder.substr(drive));
  RemoveSlashes(twin);
  return files.folder_exists(twin) && !files.files(twin, "*").empty() ? twin : std::string();
}

}  // namespace support
