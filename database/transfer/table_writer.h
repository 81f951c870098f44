// A format in which tables are exported. It is told of each table, of its rows and, at the end, of all tables together.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "database/transfer/delimited_text.h"
#include "database/transfer/layout_tables.h"
#include "database/transfer/output_folder.h"

namespace transfer {

class TableWriter {
 public:
  virtual ~TableWriter() = default;
  /// Returns the name of the file that will hold the table's rows.
  virtual std::string begin_table(const jet_import::SourceTable& table) = 0;
  /// The values are in the order of the table's fields; texts are UTF-8. Raises 3421 for a value that this format
  /// cannot hold.
  virtual void add_row(std::span<const engine::Value> values) = 0;
  virtual void end_table() = 0;
  /// Call it after the last table. `layout` describes all tables.
  virtual void finish(const LayoutRows& layout) = 0;
};

std::unique_ptr<TableWriter> csv_writer(const OutputFolder& folder, TextEncoding encoding);
std::unique_ptr<TableWriter> json_writer(const OutputFolder& folder);
std::unique_ptr<TableWriter> sql_writer(const OutputFolder& folder, TextEncoding encoding);
std::unique_ptr<TableWriter> plain_file_writer(const OutputFolder& folder);

/// Raises 3421 for a text with characters that code page 1252 does not have.
void require_encodable(std::string_view text, TextEncoding encoding);
std::string encoded(std::string text, TextEncoding encoding);

/// Gives each table a file name. No two names differ only in case, and all characters are valid on every system.
class FileNames {
 public:
  explicit FileNames(std::string ending) : ending_(std::move(ending)) {}
  std::string next(const std::string& table);

 private:
  std::string ending_;
  std::vector<std::string> taken_;
};

}  // namespace transfer
