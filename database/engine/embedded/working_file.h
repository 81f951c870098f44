// A database file that is built beside its final place, and moves there when it is complete.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/embedded/connection.h"

namespace engine::embedded {

class WorkingFile {
 public:
  /// Creates an empty file, which is the user's alone, beside `target`, a host path. `mark` is one of
  /// support/abandoned_files.h. First removes what runs that were killed have left there. Raises what
  /// check_place_of_new_file() and create_private_file() raise.
  WorkingFile(std::string target, std::string_view mark);
  /// Removes the file unless it has taken its place.
  ~WorkingFile();
  WorkingFile(const WorkingFile&) = delete;
  WorkingFile& operator=(const WorkingFile&) = delete;

  const std::string& path() const noexcept { return path_; }
  /// Gives the closed file its name. Raises 3204 where a file of that name exists.
  void take_name();
  /// Puts the closed file in the place of the one that `held` has open alone, closes that one, and takes over its
  /// rights. Raises 3045 where somebody has opened it in the meantime, 3043 where the system refuses; `held` may be
  /// closed then, too.
  void replace(std::unique_ptr<Connection>& held);

 private:
  std::string target_;
  std::string path_;
};

}  // namespace engine::embedded
