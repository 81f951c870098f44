#include "apps/console/input_file.h"

#include <filesystem>
#include <system_error>

#include "apps/console/console.h"
#include "support/file_system.h"
#include "support/host_path.h"

namespace console {
namespace {

std::string reason(const std::string& host_path, std::uint64_t limit, std::string_view limit_text) {
  const std::filesystem::path path = support::std_path(host_path);
  if (!support::is_name_short_enough(path)) return "cannot be read: its name is too long.";
  std::error_code failure;
  const std::filesystem::file_status status = std::filesystem::status(path, failure);
  if (status.type() == std::filesystem::file_type::not_found) {
    const std::filesystem::path folder = path.parent_path();
    const bool has_folder = folder.empty() || std::filesystem::is_directory(folder, failure);
    return has_folder ? "cannot be read: there is no such file." : "cannot be read: its folder does not exist.";
  }
  if (std::filesystem::is_directory(status)) return "cannot be read: it is a folder.";
  const std::uintmax_t size = std::filesystem::file_size(path, failure);
  if (!failure && size > limit) return "is too large: more than " + std::string(limit_text) + ".";
  return "cannot be read.";
}

}  // namespace

std::string read_input_file(std::string_view what, const std::string& host_path, std::uint64_t limit,
                            std::string_view limit_text) {
  const support::FileSystem& files = support::host_file_system();
  if (auto content = files.read(files.windows_path(host_path), limit)) return *std::move(content);
  throw InputError(std::string(what) + ' ' + host_path + ' ' + reason(host_path, limit, limit_text));
}

}  // namespace console
