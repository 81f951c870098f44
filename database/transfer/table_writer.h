// A form in which tables are exported: told of each table, its rows, and in the end of all of them.
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
  /// In the order of the table's fields; texts are UTF-8. Raises 3421 for a value that this form cannot hold.
  virtual void add_row(std::span<const engine::Value> values) = 0;
  virtual void end_table() = 0;
  /// After the last table: `layout` describes all of them.
  virtual void finish(const LayoutRows& layout) = 0;
};

std::unique_ptr<TableWriter> csv_writer(const OutputFolder& folder, TextEncoding encoding);
std::unique_ptr<TableWriter> json_writer(const OutputFolder& folder);
std::unique_ptr<TableWriter> sql_writer(const OutputFolder& folder, TextEncoding encoding);
std::unique_ptr<TableWriter> plain_file_writer(const OutputFolder& folder);

/// Raises 3421 for a text with characters that code page 1252 does not have.
void require_encodable(std::string_view text, TextEncoding encoding);
std::string encoded(std::string text, TextEncoding encoding);

/// Names of files for tables: each once, whatever the case, and of characters that every system takes.
class FileNames {
 public:
  explicit FileNames(std::string ending) : ending_(std::move(ending)) {}
  std::string next(const std::string& table);

 private:
  std::string ending_;
  std::vector<std::string> taken_;
};

}  // namespace transfer
