// A file of comma-separated values for each table, and the lists that let them be taken back.
#include <optional>

#include "database/transfer/table_writer.h"
#include "database/transfer/value_text.h"

namespace transfer {
namespace {

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

}  // namespace transfer
