#include "database/engine/embedded/database_file.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "database/engine/engine_error.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

constexpr std::string_view sqlite_magic{"SQLite format 3\0", 16};
constexpr std::string_view jet_magic{"Standard Jet DB\0", 16};
constexpr std::size_t jet_magic_offset = 4;
constexpr std::int64_t encrypted_page_size = 4096;

std::filesystem::path file_path(const std::string& host_path) { return support::std_path(host_path); }

/// Length of the ending that SQLite's journal adds to the name of a file: "NAME-journal".
constexpr std::size_t ending_of_companions = 8;

[[noreturn]] void raise_name_too_long() {
  throw support::RuntimeError(error_number::invalid_path, "The name of the database file is too long.");
}

bool folder_is_there(const std::filesystem::path& path) {
  std::error_code ignored;
  const std::filesystem::path folder = path.parent_path();
  return folder.empty() || std::filesystem::is_directory(folder, ignored);
}

bool is_plain(std::string_view beginning) {
  // If the file is cut off so early, the journal holds the rest.
  if (beginning.size() < telling_size) return sqlite_magic.starts_with(beginning.substr(0, sqlite_magic.size()));
  return beginning.starts_with(sqlite_magic);
}

}  // namespace

JetFileError::JetFileError()
    : RuntimeError(error_number::unknown_format,
                   "Unrecognized database format: the file was written by the Jet engine, whose automation object "
                   "DAO.DBEngine.36 is not installed on this machine, or for programs of 32 bits only.") {}

void check_place_of_file(const std::string& host_path) {
  const std::filesystem::path path = file_path(host_path);
  if (!support::is_name_short_enough(path)) raise_name_too_long();
  std::error_code failure;
  const std::filesystem::file_type type = std::filesystem::status(path, failure).type();
  if (type == std::filesystem::file_type::regular) return;
  if (type == std::filesystem::file_type::not_found)
    raise(folder_is_there(path) ? error_number::file_not_found : error_number::invalid_path);
  raise(error_number::file_not_opened);
}

bool has_journal(const std::string& host_path) {
  std::error_code failure;
  std::filesystem::path journal = std::filesystem::canonical(file_path(host_path), failure);
  journal += "-journal";
  // A journal that begins with 0 is done with.
  return !failure && std::ifstream(journal, std::ios::binary).get() > 0;
}

DatabaseFile identify_database_file(std::string_view beginning, std::int64_t file_size, bool with_journal) {
  if (beginning.empty() || (beginning.size() < telling_size && !with_journal)) raise(error_number::unknown_format);
  if (is_plain(beginning)) return {};
  if (beginning.size() > jet_magic_offset && beginning.substr(jet_magic_offset).starts_with(jet_magic)) {
    throw JetFileError();
  }
  if (beginning.size() < SQLCIPHER4_SALT_SIZE) raise(error_number::unknown_format);
  if (file_size % encrypted_page_size != 0 && !with_journal) raise(error_number::unknown_format);
  DatabaseFile found{.encrypted = true};
  std::ranges::copy(beginning.substr(0, found.salt.size()), found.salt.begin());
  found.doubtful = !is_telling_salt(found.salt);
  return found;
}

void refuse_fitting_password(std::string_view beginning, std::int64_t file_size, std::string_view password,
                             bool seemed_wrong) {
  // A page of 512 bytes would have too little room for SQLite beside the cipher's data.
  constexpr std::int64_t least_page_size = 1024;
  if (std::ssize(beginning) < least_page_size || file_size % least_page_size != 0) return;
  if (is_plain(beginning)) return;
  FileSalt salt;
  std::ranges::copy(beginning.substr(0, salt.size()), salt.begin());
  const FileKey key{password, salt};
  const auto* page = reinterpret_cast<const unsigned char*>(beginning.data());
  for (std::size_t size = least_page_size; size <= beginning.size(); size *= 2) {
    const bool other_size = size != static_cast<std::size_t>(encrypted_page_size);
    if ((!other_size && !seemed_wrong) || sqlcipher4_fits_first_page(key.key().data(), page, size) == 0) continue;
    if (!other_size)
      raise(error_number::unknown_format, "the password is right, but the file is damaged behind its first page");
    raise(error_number::unknown_format,
          fmt::format("the file is encrypted in pages of {} bytes, and here they have {}", size, encrypted_page_size));
  }
}

void check_place_of_new_file(const std::string& host_path) {
  const std::filesystem::path path = file_path(host_path);
  if (!support::is_name_short_enough(path, ending_of_companions)) raise_name_too_long();
  std::error_code failure;
  if (!path.has_filename() || !folder_is_there(path)) raise(error_number::invalid_path);
  if (std::filesystem::exists(std::filesystem::symlink_status(path, failure))) raise(error_number::database_exists);
}

void remove_empty_file(const std::string& host_path) noexcept {
  std::error_code failure;
  const std::filesystem::path path = file_path(host_path);
  if (std::filesystem::file_size(path, failure) == 0 && !failure) std::filesystem::remove(path, failure);
}

}  // namespace engine::embedded
