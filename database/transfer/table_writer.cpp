#include "database/transfer/table_writer.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "database/engine/embedded/plain_file.h"
#include "database/engine/engine_error.h"
#include "database/transfer/sql_words.h"
#include "database/transfer/value_text.h"
#include "support/encoding.h"
#include "support/json_writer.h"

namespace transfer {

namespace {

constexpr std::string_view forbidden = "<>:\"/\\|?*";
/// Names of devices. They stay such with any ending behind them.
constexpr std::string_view devices[] = {"con", "prn", "aux", "nul", "com", "lpt"};

std::string safe_name(const std::string& table) {
  std::string name = table;
  std::ranges::replace_if(
      name,
      [](char letter) {
        return static_cast<unsigned char>(letter) < 0x20 || forbidden.find(letter) != std::string_view::npos;
      },
      '_');
  const std::string lower = support::to_lower(name.substr(0, 3));
  const bool is_device = name.size() <= 4 && std::ranges::find(devices, lower) != std::end(devices);
  // A name with an underscore at its beginning is that of a list.
  return name.empty() || is_device || name.front() == '_' ? "t" + name : name;
}

}  // namespace

std::string FileNames::next(const std::string& table) {
  const std::string name = safe_name(table);
  for (int number = 1;; ++number) {
    std::string file = name + (number > 1 ? fmt::format("-{}", number) : "") + ending_;
    const std::string folded = support::to_lower(file);
    if (std::ranges::find(taken_, folded) != taken_.end()) continue;
    taken_.push_back(folded);
    return file;
  }
}

void require_encodable(std::string_view text, TextEncoding encoding) {
  if (encoding == TextEncoding::Utf8 || support::fits_cp1252(text)) return;
  throw support::RuntimeError(cannot_convert, "It holds a character that code page 1252 does not have.");
}

std::string encoded(std::string text, TextEncoding encoding) {
  if (encoding == TextEncoding::Utf8) return text;
  require_encodable(text, encoding);
  return support::cp1252_from_utf8(text);
}

namespace {

/// A file of comma-separated values for each table, and the lists that an import needs.
class CsvWriter : public TableWriter {
 public:
  CsvWriter(const OutputFolder& folder, TextEncoding encoding) : folder_(folder), encoding_(encoding) {}

  std::string begin_table(const jet_import::SourceTable& table) override {
    std::string name = names_.next(table.name);
    file_.emplace(folder_.file(name));
    TextRow fields;
    for (const jet_import::SourceField& field : table.fields) fields.push_back(field.name);
    file_->write(encoded(delimited_row(fields), encoding_));
    return name;
  }

  void add_row(std::span<const engine::Value> values) override {
    line_.clear();
    for (const engine::Value& value : values) {
      if (&value != values.data()) line_ += ',';
      append(value);
    }
    line_ += "\r\n";
    file_->write(encoding_ == TextEncoding::Utf8 ? line_ : encoded(line_, encoding_));
  }

  void end_table() override { file_->close(); }

  void finish(const LayoutRows& layout) override {
    write_list(table_list(), layout.tables);
    write_list(field_list(), layout.fields);
    write_list(index_list(), layout.indexes);
  }

 private:
  void append(const engine::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
      append_cell(line_, *text);
    } else {
      append_text(line_, value);
    }
  }

  void write_list(const LayoutTable& list, const std::vector<TextRow>& rows) const {
    OutputFile file(folder_.file(std::string(list.name) + ".csv"));
    file.write(delimited_row(list.columns));
    for (const TextRow& row : rows) file.write(delimited_row(row));
    file.close();
  }

  const OutputFolder& folder_;
  TextEncoding encoding_;
  FileNames names_{".csv"};
  std::optional<OutputFile> file_;
  std::string line_;
};

}  // namespace

std::unique_ptr<TableWriter> csv_writer(const OutputFolder& folder, TextEncoding encoding) {
  return std::make_unique<CsvWriter>(folder, encoding);
}

namespace {

using support::append_json_text;

struct AppendJson {
  std::string& json;
  void operator()(engine::Null) const { json += "null"; }
  void operator()(bool value) const { json += value ? "true" : "false"; }
  void operator()(std::int32_t value) const { append_text(json, value); }
  void operator()(float value) const { number(value, value); }
  void operator()(double value) const { number(value, value); }
  void operator()(engine::Date value) const { append_json_text(json, date_text(value)); }
  void operator()(const std::string& value) const { append_json_text(json, value); }

 private:
  /// JSON has no infinite number.
  void number(double size, const engine::Value& value) const {
    std::isfinite(size) ? append_text(json, value) : append_json_text(json, text_of(value));
  }
};

/// A file of JSON for each table: an array of objects, one in a line.
class JsonTables : public TableWriter {
 public:
  explicit JsonTables(const OutputFolder& folder) : folder_(folder) {}

  std::string begin_table(const jet_import::SourceTable& table) override {
    std::string name = names_.next(table.name);
    file_.emplace(folder_.file(name));
    keys_.clear();
    for (const jet_import::SourceField& field : table.fields) {
      std::string& key = keys_.emplace_back(keys_.empty() ? "{" : ",");
      append_json_text(key, field.name);
      key += ':';
    }
    file_->write("[");
    row_end_ = "\n";
    return name;
  }

  void add_row(std::span<const engine::Value> values) override {
    line_ = row_end_;
    for (std::size_t i = 0; i < values.size(); ++i) {
      line_ += keys_[i];
      std::visit(AppendJson{line_}, values[i]);
    }
    line_ += '}';
    row_end_ = ",\n";
    file_->write(line_);
  }

  void end_table() override {
    file_->write("\n]\n");
    file_->close();
  }

  void finish(const LayoutRows&) override {}

 private:
  const OutputFolder& folder_;
  FileNames names_{".json"};
  std::optional<OutputFile> file_;
  std::vector<std::string> keys_;
  std::string line_;
  std::string_view row_end_;
};

}  // namespace

std::unique_ptr<TableWriter> json_writer(const OutputFolder& folder) { return std::make_unique<JsonTables>(folder); }

namespace {

constexpr std::string_view script_name = "tables.sql";

/// One script of standard SQL: tables, rows and indexes, in one transaction.
class SqlWriter : public TableWriter {
 public:
  SqlWriter(const OutputFolder& folder, TextEncoding encoding) : file_(folder.file(script_name)), encoding_(encoding) {
    file_.write("BEGIN;\n");
  }

  std::string begin_table(const jet_import::SourceTable& table) override {
    write(create_table_statement(table) + ";\n");
    insert_ = insert_beginning(table.name) + "(";
    indexes_ = create_index_statements(table);
    return std::string(script_name);
  }

  void add_row(std::span<const engine::Value> values) override {
    std::string line = insert_;
    for (const engine::Value& value : values) {
      if (&value != values.data()) line += ',';
      append(line, value);
    }
    write(line + ");\n");
  }

  void end_table() override {
    for (const std::string& index : indexes_) write(index + ";\n");
  }

  void finish(const LayoutRows&) override {
    file_.write("COMMIT;\n");
    file_.close();
  }

 private:
  static void append(std::string& line, const engine::Value& value) {
    const std::optional<double> number = engine::floating_number(value);
    if (engine::is_null(value)) {
      line += "NULL";
    } else if (number && std::isinf(*number)) {
      line += *number < 0 ? "-9e999" : "9e999";
    } else if (std::holds_alternative<std::string>(value) || std::holds_alternative<engine::Date>(value)) {
      append_sql_text(line, text_of(value));
    } else {
      append_text(line, value);
    }
  }

  void write(const std::string& text) { file_.write(encoded(text, encoding_)); }

  OutputFile file_;
  TextEncoding encoding_;
  std::string insert_;
  std::vector<std::string> indexes_;
};

}  // namespace

std::unique_ptr<TableWriter> sql_writer(const OutputFolder& folder, TextEncoding encoding) {
  return std::make_unique<SqlWriter>(folder, encoding);
}

namespace {

namespace embedded = engine::embedded;

std::string insert_statement(std::string_view table, std::size_t columns) {
  std::string sql = insert_beginning(table) + "(?";
  for (std::size_t i = 1; i < columns; ++i) sql += ",?";
  return sql + ")";
}

constexpr std::string_view plain_name = "tables.sqlite";

/// One SQLite file that any tool opens.
class PlainFileWriter : public TableWriter {
 public:
  explicit PlainFileWriter(const OutputFolder& folder) : file_(embedded::create_plain_file(folder.file(plain_name))) {}

  /// Creates the indexes at once: building them later would sort in memory.
  std::string begin_table(const jet_import::SourceTable& table) override {
    file_->run(create_table_statement(table));
    for (const std::string& index : create_index_statements(table)) file_->run(index);
    insert_ = file_->insert(insert_statement(table.name, table.fields.size()));
    return std::string(plain_name);
  }

  void add_row(std::span<const engine::Value> values) override {
    row_.assign(values.begin(), values.end());
    for (engine::Value& value : row_) {
      if (const auto* date = std::get_if<engine::Date>(&value)) value = date_text(*date);
    }
    insert_->add(row_);
  }

  void end_table() override { insert_.reset(); }

  void finish(const LayoutRows& layout) override {
    write_list(table_list(), layout.tables);
    write_list(field_list(), layout.fields);
    write_list(index_list(), layout.indexes);
    embedded::finish_plain_file(std::move(file_));
  }

 private:
  void write_list(const LayoutTable& list, const std::vector<TextRow>& rows) {
    std::string sql = "CREATE TABLE " + sql_name(list.name) + " (";
    for (const std::string& column : list.columns)
      sql += (&column == list.columns.data() ? "" : ", ") + sql_name(column);
    file_->run(sql + ")");
    const auto insert = file_->insert(insert_statement(list.name, list.columns.size()));
    for (const TextRow& row : rows) insert->add(std::vector<engine::Value>(row.begin(), row.end()));
  }

  std::unique_ptr<embedded::PlainFile> file_;
  std::unique_ptr<embedded::PlainInsert> insert_;
  std::vector<engine::Value> row_;
};

}  // namespace

std::unique_ptr<TableWriter> plain_file_writer(const OutputFolder& folder) {
  return std::make_unique<PlainFileWriter>(folder);
}

}  // namespace transfer
