// What only the engine of a file can do for the file as a whole, beyond its tables. If Database::care() is null,
// another engine takes care of the file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "support/error.h"
#include "support/error_number.h"

namespace engine {

class Database;

/// Something that is wrong with a file. Its text holds names of tables and fields, never values.
struct FileFault {
  std::string_view kind;  ///< "page", "structure", "catalogue" or "rule"
  std::string table;      ///< empty where it is not known
  std::string text;
  std::int64_t rows = 0;  ///< number of rows that are affected; 0 where the fault is not about rows
};

/// False for failures that say nothing about the file: the disk, a file in use, a cancellation. They end a check.
inline bool tells_of_the_file(const support::RuntimeError& error) {
  constexpr auto disk = support::error_number::disk_error;
  constexpr auto in_use = support::error_number::file_in_use;
  constexpr auto cancelled = support::error_number::cancelled;
  return error.number() != disk && error.number() != in_use && error.number() != cancelled;
}

class FileCare {
 public:
  virtual ~FileCare() = default;
  /// Checks every page (in an encrypted file also that it is the page that was written), the structure of pages, rows
  /// and indexes, the catalogue against the tables, and the rows against the known rules. Calls `tell` for each fault,
  /// and `look` now and then with the number of pages that were read and of all pages; an error that either of them
  /// raises ends the check. Returns false where the damage keeps every table from being read. Raises only errors that
  /// say nothing about the file: 3043, 3045. Call it in a transaction, so that it sees one state.
  virtual bool check(const std::function<void(const FileFault&)>& tell,
                     const std::function<void(std::int64_t done, std::int64_t all)>& look) = 0;
  /// Writes the file anew beside the old one, its tables one behind the other and without gaps, and puts it in the old
  /// one's place. AutoNumbers count on from the highest number that exists, as if no higher one had been given. Before
  /// the exchange, `verify` gets the new file, open for reading; an error that it raises ends the work. On failure the
  /// file is as it was. Raises 3045 where the file is open elsewhere, 3246 in a transaction, 3027 where it is
  /// read-only, 3251 where it has a second name in a folder.
  virtual void compact(const std::function<void(Database& written)>& verify) = 0;
};

}  // namespace engine
