// A database file that appears only when it is complete: it is built under a name beside its own and then renamed.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/environment.h"

namespace database {

class NewFile {
 public:
  /// Creates the database, open and without tables. An empty password leaves it unencrypted. First removes what killed
  /// runs have left. Raises 3204 where the file exists, and what the engine raises where it cannot be created.
  NewFile(const Environment& environment, std::string_view path, std::string_view password);
  /// Removes the file unless finish() returned.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  engine::Database& database() const { return *database_; }
  /// Closes the database and gives the file its name. Raises 3204 where a file of this name was made in the meantime.
  void finish();

 private:
  void close();
  void discard();
  bool target_exists() const;

  support::FileSystem& files_;
  std::string path_;
  std::string working_path_;
  std::unique_ptr<engine::Engine> engine_;
  std::unique_ptr<engine::Database> database_;
};

}  // namespace database
