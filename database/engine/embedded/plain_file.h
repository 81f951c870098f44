// A SQLite file of standard tables for other programs: it has no password, no catalogue, and only SQLite's own
// collations. Values are stored as SQLite stores them; the caller knows what they mean.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "database/engine/value.h"

namespace engine::embedded {

/// Fills a table. It must not outlive its file.
class PlainInsert {
 public:
  virtual ~PlainInsert() = default;
  /// Adds a row with one value for each column. Yes/No is stored as -1 or 0, a Date as its days.
  virtual void add(std::span<const Value> values) = 0;
};

/// Reads rows from the first to the last. It must not outlive its file.
class PlainRows {
 public:
  virtual ~PlainRows() = default;
  virtual bool next() = 0;
  /// Null, a whole number that fits into 32 bits, a Double, or a text. Raises 3421 for bytes, and for a whole number
  /// that a Double cannot hold.
  virtual Value value(int column) const = 0;
};

class PlainFile {
 public:
  virtual ~PlainFile() = default;
  virtual void run(std::string_view sql) = 0;
  virtual std::unique_ptr<PlainInsert> insert(std::string_view sql) = 0;
  virtual std::unique_ptr<PlainRows> rows(std::string_view sql) = 0;
  /// True for a table; false for a view or a virtual table.
  virtual bool has_table(std::string_view name) = 0;
};

/// Creates a file, which must not exist. Everything up to finish_plain_file() is one transaction. Raises what
/// create_private_file() raises.
std::unique_ptr<PlainFile> create_plain_file(const std::string& host_path);
/// Commits the transaction and closes the file.
void finish_plain_file(std::unique_ptr<PlainFile> file);
/// Opens a file only for reading. Raises 3343 where it is no such file.
std::unique_ptr<PlainFile> open_plain_file(const std::string& host_path);

/// True where the file begins as a SQLite file without password does.
bool is_plain_file(const std::string& host_path);

}  // namespace engine::embedded
