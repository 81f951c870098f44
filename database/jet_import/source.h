// A database that is to be imported, as the copying procedure sees it: its tables, what the file says of their fields
// and indexes, and their rows one by one. Each way to read a Jet file has one reader behind this interface.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/engine.h"
#include "database/environment.h"

namespace jet_import {

/// A field. The members have the names of the engine's own properties.
struct SourceField {
  std::string name;
  engine::DataType type = engine::DataType::Text;
  std::int32_t size = 0;  ///< characters of a Text, else 0
  std::int32_t attributes = 0;
  std::int16_t ordinal_position = 0;
  std::string default_value = {};
  bool required = false;
  bool allow_zero_length = false;
  std::string validation_rule = {};
  std::string validation_text = {};
};

struct SourceIndex {
  std::string name;
  std::vector<std::string> fields;
  bool primary = false;
  bool unique = false;
  bool required = false;
  bool ignore_nulls = false;
  bool clustered = false;
};

struct SourceTable {
  std::string name;
  std::vector<SourceField> fields;
  std::vector<SourceIndex> indexes = {};
  std::string validation_rule = {};
  std::string validation_text = {};
  /// As the file gives it; nothing where the file does not know.
  std::optional<std::int64_t> row_count = {};
  /// Names of the fields whose types our databases cannot hold (bytes, embedded objects).
  std::vector<std::string> foreign_fields = {};
  /// Names of the indexes whose fields the file does not tell.
  std::vector<std::string> unreadable_indexes = {};
};

/// The rows of one table, from first to last.
class SourceRows {
 public:
  virtual ~SourceRows() = default;
  /// False after the last row. Raises 3343 for a row that cannot be read.
  virtual bool next() = 0;
  /// The value of a field in this row, by its position in SourceTable::fields. Raises 3343 where it cannot be read, and
  /// 6 where a number does not fit its type here.
  virtual engine::Value value(std::size_t field) = 0;
};

class Source {
 public:
  virtual ~Source() = default;
  virtual const std::vector<SourceTable>& tables() const = 0;
  /// The rows of one table at a time.
  virtual std::unique_ptr<SourceRows> rows(std::size_t table) = 0;
  /// Names of tables that only lead to other files. They have no rows of their own.
  virtual const std::vector<std::string>& linked_tables() const = 0;
};

/// Opens a Jet file with this platform's reader: libmdb on POSIX; on Windows the engine, whose automation objects must
/// be installed. Raises 3024 for a missing file, 3031 for a wrong password, 3343 for a file that is no Jet file or that
/// the reader does not know.
std::unique_ptr<Source> open_source(const database::Environment& environment, std::string_view path,
                                    std::string_view password);

}  // namespace jet_import
