// A file of JSON for each table: an array of objects, one in a line.
#include "support/json_writer.h"

#include <cmath>
#include <optional>

#include "database/transfer/table_writer.h"
#include "database/transfer/value_text.h"

namespace transfer {
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
  /// JSON has no number that is infinite.
  void number(double size, const engine::Value& value) const {
    std::isfinite(size) ? append_text(json, value) : append_json_text(json, text_of(value));
  }
};

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

}  // namespace transfer
