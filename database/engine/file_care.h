// What only the engine that keeps a file can do for the file as a whole, beyond the tables in it. A database without
// one (Database::care() is null) is in the hands of another engine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace engine {

class Database;

/// Something that is wrong with a file. Its texts hold names of tables and fields, never values.
struct FileFault {
  std::string_view kind;  ///< "page", "structure", "catalogue" or "rule"
  std::string table;      ///< empty where it is not known
  std::string text;
  std::int64_t rows = 0;  ///< rows that it is about; 0 where it is not about rows
};

class FileCare {
 public:
  virtual ~FileCare() = default;
  /// Looks at every page (of an encrypted file, whether it is the one that was written), at how pages, rows and indexes
  /// hang together, at the catalogue beside the tables, and at the rows beside the rules that are known. `tell` is
  /// called for each fault, `look` once in a while with the pages that were read and all there are; what it raises ends
  /// the check. False where the damage keeps every table from being read. Raises only what tells nothing of the file:
  /// 3043, 3045. To be called in a transaction, so that everything is seen in one state.
  virtual bool check(const std::function<void(const FileFault&)>& tell,
                     const std::function<void(std::int64_t done, std::int64_t all)>& look) = 0;
  /// Writes the file anew beside the old one, its tables one behind the other and without gaps, and puts it in the old
  /// one's place. AutoNumbers count on from the highest number that is there, as if none had been given beyond it.
  /// Before the exchange `verify` is given the new file, open for reading; what it raises ends the work. On failure the
  /// file is as it was. 3045 where the file is open elsewhere, 3246 in a transaction, 3027 where it is read-only, 3251
  /// where it has a second name in a folder.
  virtual void compact(const std::function<void(Database& written)>& verify) = 0;
};

}  // namespace engine
