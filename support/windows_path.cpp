#include "support/windows_path.h"

#include <algorithm>

#include "support/encoding.h"
#include "support/error.h"
#include "support/text.h"

namespace support {
namespace {

std::string drive_of(std::string_view path) {
  std::string drive(first_characters(path, 2));
  if (!path.empty() && (drive.size() < 2 || drive.back() != '\\')) drive += '\\';
  return drive;
}

/// "C:\first\..\..\name": one "..\" for every folder below the first.
std::string shortened(std::string_view path) {
  const auto first_end = path.find('\\', first_characters(path, 3).size());
  if (first_end == std::string_view::npos) return std::string(path);
  const std::string_view deeper = path.substr(first_end + 1);
  std::string text(path.substr(0, first_end + 1));
  for (auto levels = std::count(deeper.begin(), deeper.end(), '\\'); levels > 0; --levels) text += "..\\";
  return text.append(path.substr(path.rfind('\\') + 1));
}

std::string part_of_path(std::string_view path, PathPart part) {
  const std::size_t name_start = path.rfind('\\') + 1;  // 0 where there is no backslash
  switch (part) {
    case PathPart::Drive:
      return drive_of(path);
    case PathPart::Folder:
      return std::string(path.substr(0, name_start));
    case PathPart::FileName:
      return std::string(path.substr(name_start));
    case PathPart::Shortened:
      return shortened(path);
  }
  return {};
}

}  // namespace

void RemoveSlashes(std::string& path) {
  Procedure procedure("code!RemoveSlashes");
  procedure.step([&] {
    replace(path, "\\\\", "\\");
    if (path.starts_with('\\')) path.insert(path.begin(), '\\');
  });
}

std::string ExtractFromPath(std::string_view path, int part) {
  Procedure procedure("code!ExtractFromPath");
  if (part < static_cast<int>(PathPart::Drive) || part > static_cast<int>(PathPart::Shortened)) return {};
  std::string text;
  procedure.step([&] { text = part_of_path(path, static_cast<PathPart>(part)); });
  return text;
}

std::string with_backslash(std::string folder) {
  if (!folder.ends_with('\\')) folder += '\\';
  return folder;
}

std::string join_path(std::string_view folder, std::string_view name) {
  std::string path = std::string(folder) + "\\" + std::string(name);
  RemoveSlashes(path);
  return path;
}

std::string virtual_store_twin(const FileSystem& files, std::string_view local_data, std::string_view folder) {
  constexpr std::size_t drive = 2;
  const bool on_drive = folder.size() > drive && folder[1] == ':' && folder[drive] == '\\';
  if (local_data.empty() || !on_drive) return {};
  std::string twin = std::string(local_data) + "\\VirtualStore" + std::string(folder.substr(drive));
  RemoveSlashes(twin);
  return files.folder_exists(twin) && !files.files(twin, "*").empty() ? twin : std::string();
}

}  // namespace support
