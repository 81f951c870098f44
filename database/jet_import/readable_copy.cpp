#include "database/jet_import/readable_copy.h"

#include <fmt/core.h>

#include <filesystem>
#include <random>
#include <string>
#include <utility>

#include "database/jet_import/import.h"

namespace jet_import {
namespace {

class TemporaryCopy : public database::ReadableCopy {
 public:
  TemporaryCopy(support::FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}
  ~TemporaryCopy() override { files_.remove(path_); }
  TemporaryCopy(const TemporaryCopy&) = delete;
  TemporaryCopy& operator=(const TemporaryCopy&) = delete;
  const std::string& path() const override { return path_; }

 private:
  support::FileSystem& files_;
  std::string path_;
};

std::string temporary_path(const support::FileSystem& files) {
  const std::u8string folder = std::filesystem::temp_directory_path().u8string();
  std::string path = files.windows_path(std::string(folder.begin(), folder.end()));
  if (!path.ends_with('\\')) path += '\\';
  return fmt::format("{}lookup{}.mdb", path, std::random_device{}());
}

std::unique_ptr<Source> open(const database::Environment& environment, std::string_view path) {
  try {
    return open_source(environment, path, "");
  } catch (const support::RuntimeError& error) {
    if (error.number() != support::error_number::wrong_password) throw;
    return open_source(environment, path, environment.patient_password());
  }
}

}  // namespace

std::unique_ptr<database::ReadableCopy> readable_copy(const database::Environment& environment, std::string_view path) {
  const auto source = open(environment, path);
  database::Environment quiet = environment;
  quiet.progress = nullptr;
  auto copy = std::make_unique<TemporaryCopy>(environment.file_system(), temporary_path(environment.file_system()));
  const Choices choices{.password = "", .leave_out_foreign_fields = true, .leave_out_unreadable_indexes = true};
  import_database(quiet, *source, copy->path(), choices);
  return copy;
}

}  // namespace jet_import
