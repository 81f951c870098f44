// A database file that is built beside the place that it is to have, and takes it when it is whole.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/embedded/connection.h"

namespace engine::embedded {

class WorkingFile {
 public:
  /// An empty file of the user's alone beside `target`, a host path; `mark` as support/abandoned_files.h has them. What
  /// runs that were killed left there is removed first. Raises as check_place_of_new_file() and create_private_file()
  /// do.
  WorkingFile(std::string target, std::string_view mark);
  /// Leaves nothing behind unless the file has taken its place.
  ~WorkingFile();
  WorkingFile(const WorkingFile&) = delete;
  WorkingFile& operator=(const WorkingFile&) = delete;

  const std::string& path() const noexcept { return path_; }
  /// Gives the closed file its name; 3204 where a file of that name is there.
  void take_name();
  /// Puts the closed file in the place of the one that `held` has open alone, closes that, and takes over its rights.
  /// 3045 where somebody has opened it meanwhile, 3043 where the system refuses; `held` may be closed then, too.
  void replace(std::unique_ptr<Connection>& held);

 private:
  std::string target_;
  std::string path_;
};

}  // namespace engine::embedded
