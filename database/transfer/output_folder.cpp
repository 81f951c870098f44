#include "database/transfer/output_folder.h"

#include <filesystem>
#include <system_error>

#include "support/abandoned_files.h"
#include "support/error.h"
#include "support/host_file.h"
#include "support/host_path.h"

namespace transfer {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view export_mark = ".exporting-";
constexpr std::size_t pending_size = 1 << 16;
constexpr auto exists_already = support::error_number::database_exists;
constexpr auto no_such_folder = support::error_number::invalid_path;
constexpr auto disk_error = support::error_number::disk_error;

/// "folder/" names the folder, too.
std::string without_last_separator(const std::string& host_path) {
  const fs::path path = support::std_path(host_path);
  return path.has_filename() ? host_path : support::host_path_of(path.parent_path());
}

bool is_free(const fs::path& path) {
  std::error_code failure;
  const fs::file_status status = fs::symlink_status(path, failure);
  if (status.type() == fs::file_type::not_found) return true;
  return fs::is_directory(status) && fs::is_empty(path, failure) && !failure;
}

}  // namespace

OutputFolder::OutputFolder(const std::string& host_path)
    : path_(without_last_separator(host_path)), working_path_(support::working_path(path_, export_mark)) {
  const fs::path path = support::std_path(path_);
  if (!is_free(path)) {
    working_path_.clear();
    throw support::RuntimeError(exists_already, "There is something at " + path_ + " already.");
  }
  std::error_code failure;
  if (path.has_parent_path() && !fs::is_directory(path.parent_path(), failure)) {
    throw support::RuntimeError(no_such_folder, "There is no folder for " + path_ + ".");
  }
  const fs::path working = support::std_path(working_path_);
  if (!fs::create_directory(working, failure)) {
    throw support::RuntimeError(support::error_number::path_file_access, "No folder can be made for " + path_ + ".");
  }
  fs::permissions(working, fs::perms::owner_all, failure);
}

OutputFolder::~OutputFolder() {
  std::error_code failure;
  if (!working_path_.empty()) fs::remove_all(support::std_path(working_path_), failure);
}

std::string OutputFolder::file(std::string_view name) const {
  return support::host_path_of(support::std_path(working_path_) / support::std_path(name));
}

void OutputFolder::finish() {
  std::error_code failure;
  if (is_free(support::std_path(path_))) fs::remove(support::std_path(path_), failure);
  if (!support::sync_host_file(working_path_)) {
    throw support::RuntimeError(disk_error, "The disk does not take " + path_);
  }
  if (!support::rename_host_file(working_path_, path_)) {
    throw support::RuntimeError(exists_already, "The folder cannot be given its name: " + path_);
  }
  working_path_.clear();
}

OutputFile::OutputFile(const std::string& host_path)
    : path_(host_path), file_(support::std_path(host_path), std::ios::binary) {
  if (!file_) fail();
  std::error_code failure;
  fs::permissions(support::std_path(host_path), fs::perms::owner_read | fs::perms::owner_write, failure);
}

void OutputFile::fail() const {
  throw support::RuntimeError(
      disk_error, "The disk is full or does not take " + support::host_path_of(support::std_path(path_).filename()));
}

void OutputFile::flush() {
  file_.write(pending_.data(), static_cast<std::streamsize>(pending_.size()));
  if (!file_) fail();
  pending_.clear();
}

void OutputFile::write(std::string_view bytes) {
  pending_ += bytes;
  if (pending_.size() >= pending_size) flush();
}

void OutputFile::close() {
  flush();
  file_.close();
  if (file_.fail() || !support::sync_host_file(path_)) fail();
}

}  // namespace transfer
