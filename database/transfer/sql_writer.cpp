// One script of standard SQL: tables, rows and indexes, in one transaction.
#include <cmath>
#include <optional>

#include "database/transfer/sql_words.h"
#include "database/transfer/table_writer.h"
#include "database/transfer/value_text.h"

namespace transfer {
namespace {

constexpr std::string_view script_name = "tables.sql";

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

}  // namespace transfer
