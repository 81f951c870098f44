// Runs the console programs in this process, as their main would, and keeps their output; and makes folders for that.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "apps/console/console.h"

namespace apps_test {

// What most of these tests use.
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct Outcome {
  int code = 0;
  std::string out, err;
};

using Environment = std::map<std::string, std::string>;

/// The program's folder is the source folder, whose "texts" hold the language tables.
Outcome run_patientdb(const std::vector<std::string>& arguments, const Environment& environment = {});
/// Runs it at a terminal that shows every progress, and presses Ctrl+C as soon as `moment` appears.
Outcome run_interrupted(const std::vector<std::string>& arguments, const std::string& moment,
                        const Environment& environment = {});
Outcome run_batch(const std::vector<std::string>& arguments);

class TemporaryFolder {
 public:
  explicit TemporaryFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// Path of a file in the folder, as an argument.
  std::string file(const std::string& name) const;
  std::string write(const std::string& name, std::string_view content) const;
  /// Every file below the folder with its content.
  std::map<std::string, std::string> snapshot() const;

 private:
  std::filesystem::path path_;
};

std::string content_of(const std::string& path);

}  // namespace apps_test
