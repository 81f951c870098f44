#include "database/transfer/output_folder.h"

#include <filesystem>
#include <system_error>

#include "support/abandoned_files.h"
#include "support/error.h"
#include "support/host_path.h"

namespace transfer {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t pending_size = 1 << 16;
constexpr auto exists_already = support::error_number::database_exists;
constexpr auto no_such_folder = support::error_number::invalid_path;
constexpr auto disk_error = support::error_number::disk_error;

/// "folder/" means the folder, too.
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
    : path_(without_last_separator(host_path)), working_path_(support::working_path(path_, support::export_mark)) {
  const fs::path path = support::std_path(path_);
  if (!is_free(path)) {
    throw support::RuntimeError(exists_already, "There is something at " + path_ + " already.");
  }
  std::error_code failure;
  if (path.has_parent_path() && !fs::is_directory(path.parent_path(), failure)) {
    throw support::RuntimeError(no_such_folder, "There is no folder for " + path_ + ".");
  }
  support::remove_abandoned_folders(path_, support::export_mark);
  folder_.emplace(working_path_);
  if (!*folder_) {
    throw support::RuntimeError(support::error_number::path_file_access, "No folder can be made for " + path_ + ".");
  }
}

OutputFolder::~OutputFolder() {
  if (!folder_) return;
  folder_.reset();
  std::error_code failure;
  fs::remove_all(support::std_path(working_path_), failure);
}

std::string OutputFolder::file(std::string_view name) const {
  return support::host_path_of(support::std_path(working_path_) / support::std_path(name));
}

void OutputFolder::finish() {
  std::error_code failure;
  const fs::path path = support::std_path(path_);
  const bool was_there = is_free(path) && fs::remove(path, failure);
  if (folder_->take_name(path_)) return folder_.reset();
  if (was_there) fs::create_directory(path, failure);
  if (was_there || is_free(path)) throw support::RuntimeError(disk_error, "The disk does not take " + path_ + ".");
  throw support::RuntimeError(exists_already, "Something has come up at " + path_ + " meanwhile.");
}

OutputFile::OutputFile(const std::string& host_path) : path_(host_path), file_(host_path) {
  if (!file_) fail();
}

void OutputFile::fail() const {
  throw support::RuntimeError(
      disk_error, "The disk is full or does not take " + support::host_path_of(support::std_path(path_).filename()));
}

void OutputFile::flush() {
  if (!file_.write(pending_)) fail();
  pending_.clear();
}

void OutputFile::write(std::string_view bytes) {
  pending_ += bytes;
  if (pending_.size() >= pending_size) flush();
}

void OutputFile::close() {
  flush();
  if (!file_.close()) fail();
}

}  // namespace transfer
