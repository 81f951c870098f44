// A copy of a database file that was read back, and its way to a place of its own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/keeping/table_fingerprint.h"

namespace database::keeping {

class VerifiedCopy {
 public:
  /// Copies what is committed in `source` to a file beside `target` that nobody knows yet, with the same password, and
  /// reads all tables of both. The source may be in use: what others write meanwhile waits until it has been read, and
  /// is not in the copy. A file of the Jet engine is copied while nobody has it open. Raises, with nothing left behind,
  /// what the engine raises, and 3343 where the copy does not hold what the source holds.
  VerifiedCopy(const Environment& environment, std::string_view source, std::string_view password,
               std::string_view target);
  /// Leaves nothing behind unless the copy has a place.
  ~VerifiedCopy();
  VerifiedCopy(const VerifiedCopy&) = delete;
  VerifiedCopy& operator=(const VerifiedCopy&) = delete;

  const std::vector<TableFingerprint>& tables() const noexcept { return tables_; }
  std::uint64_t bytes() const { return environment_.file_system().file_size(path_).value_or(0); }

  /// Gives it the target's name; 3204 where a file of that name is there.
  void take_name();
  /// Puts it in the place of the target, which is kept under another name where one is given; as
  /// engine::exchange_file() does and raises.
  void take_place(std::string_view kept);

 private:
  void copy(engine::Database& source);

  const Environment& environment_;
  std::string target_;
  std::string path_;  ///< empty once it has its place
  std::vector<TableFingerprint> tables_;
};

}  // namespace database::keeping
