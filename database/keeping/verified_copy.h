// A copy of a database file that was read back, and how it gets its place.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/keeping/table_fingerprint.h"

namespace database::keeping {

class VerifiedCopy {
 public:
  /// Copies what is committed in `source` to a file with a temporary name beside `target`, with the same password, and
  /// reads all tables of both. The source may be in use: writers wait until it was read, and what they write is not in
  /// the copy. A file of the Jet engine is copied while nobody has it open. Raises what the engine raises, and 3343
  /// where the copy does not hold what the source holds; nothing is then left behind.
  VerifiedCopy(const Environment& environment, std::string_view source, std::string_view password,
               std::string_view target);
  /// Removes the copy unless it has a place.
  ~VerifiedCopy();
  VerifiedCopy(const VerifiedCopy&) = delete;
  VerifiedCopy& operator=(const VerifiedCopy&) = delete;

  const std::vector<TableFingerprint>& tables() const noexcept { return tables_; }
  std::uint64_t bytes() const { return environment_.file_system().file_size(path_).value_or(0); }

  /// Gives the copy the target's name. Raises 3204 where a file of that name exists.
  void take_name();
  /// Puts the copy in the place of the target, which is kept under the name `kept` where that is not empty. Raises what
  /// engine::exchange_file() raises.
  void take_place(std::string_view kept);

 private:
  void copy(engine::Database& source);

  const Environment& environment_;
  std::string target_;
  std::string path_;  ///< empty once the copy has its place
  std::vector<TableFingerprint> tables_;
};

}  // namespace database::keeping
