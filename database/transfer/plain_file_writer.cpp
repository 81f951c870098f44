// One SQLite file that any tool opens.
#include "database/engine/embedded/plain_file.h"
#include "database/transfer/sql_words.h"
#include "database/transfer/table_writer.h"
#include "database/transfer/value_text.h"

namespace transfer {
namespace {

namespace embedded = engine::embedded;

std::string insert_statement(std::string_view table, std::size_t columns) {
  std::string sql = insert_beginning(table) + "(?";
  for (std::size_t i = 1; i < columns; ++i) sql += ",?";
  return sql + ")";
}

constexpr std::string_view plain_name = "tables.sqlite";

class PlainFileWriter : public TableWriter {
 public:
  explicit PlainFileWriter(const OutputFolder& folder) : file_(embedded::create_plain_file(folder.file(plain_name))) {}

  /// With the indexes, which a later build would sort in memory.
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
