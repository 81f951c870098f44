// A SQLite file of standard tables for other programs: no password, no catalogue, and no collation but SQLite's own.
// Values stand in it as SQLite stores them; what they mean is the caller's business.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "database/engine/value.h"

namespace engine::embedded {

/// Fills a table. Must not outlive its file.
class PlainInsert {
 public:
  virtual ~PlainInsert() = default;
  /// One value for each column. Yes/No is -1 or 0; a Date is its days.
  virtual void add(std::span<const Value> values) = 0;
};

/// Rows from the first to the last. Must not outlive its file.
class PlainRows {
 public:
  virtual ~PlainRows() = default;
  virtual bool next() = 0;
  /// Null, a whole number that fits 32 bits, a Double, or a text. Raises 3421 for bytes, and for a whole number that a
  /// Double cannot hold.
  virtual Value value(int column) const = 0;
};

class PlainFile {
 public:
  virtual ~PlainFile() = default;
  virtual void run(std::string_view sql) = 0;
  virtual std::unique_ptr<PlainInsert> insert(std::string_view sql) = 0;
  virtual std::unique_ptr<PlainRows> rows(std::string_view sql) = 0;
  /// True for a table; a view or a virtual table is none.
  virtual bool has_table(std::string_view name) = 0;
};

/// A new file, which must not exist: everything up to finish_plain_file() is one transaction. Raises as
/// create_private_file() does.
std::unique_ptr<PlainFile> create_plain_file(const std::string& host_path);
/// Commits and closes it.
void finish_plain_file(std::unique_ptr<PlainFile> file);
/// For reading alone. Raises 3343 where it is no such file.
std::unique_ptr<PlainFile> open_plain_file(const std::string& host_path);

/// True where the file begins as a SQLite file without password does.
bool is_plain_file(const std::string& host_path);

}  // namespace engine::embedded
