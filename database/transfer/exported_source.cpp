#include "database/transfer/exported_source.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "database/engine/embedded/plain_file.h"
#include "database/engine/engine_error.h"
#include "database/transfer/delimited_text.h"
#include "database/transfer/layout_tables.h"
#include "database/transfer/sql_words.h"
#include "database/transfer/value_text.h"
#include "support/encoding.h"
#include "support/host_path.h"

namespace transfer {
namespace {

namespace embedded = engine::embedded;
namespace fs = std::filesystem;

std::string file_in(const std::string& folder, std::string_view name) {
  return support::host_path_of(support::std_path(folder) / support::std_path(name));
}

class ExportedSource : public jet_import::Source {
 public:
  const std::vector<jet_import::SourceTable>& tables() const override { return tables_; }
  const std::vector<std::string>& linked_tables() const override { return linked_tables_; }

 protected:
  /// Reads the three lists that describe the tables.
  template <typename ReadList>
  void take(ReadList read_list) {
    stored_ = stored_tables({read_list(table_list()), read_list(field_list()), read_list(index_list())});
    for (const StoredTable& stored : stored_) tables_.push_back(stored.table);
  }
  const StoredTable& stored(std::size_t table) const { return stored_[table]; }

 private:
  std::vector<StoredTable> stored_;
  std::vector<jet_import::SourceTable> tables_;
  std::vector<std::string> linked_tables_;
};

class CsvRows : public jet_import::SourceRows {
 public:
  CsvRows(const std::string& host_path, TextEncoding encoding, const jet_import::SourceTable& table)
      : file_(host_path, encoding), table_(table) {
    if (!file_.next(row_)) file_.refuse("the names of the fields are missing");
    for (std::size_t i = 0; i < row_.size() || i < table.fields.size(); ++i) {
      const bool same = i < row_.size() && i < table.fields.size() && row_[i].text == table.fields[i].name;
      if (!same) file_.refuse("the fields are not those of _fields.csv");
    }
  }

  bool next() override {
    if (!file_.next(row_)) return false;
    if (row_.size() != table_.fields.size()) file_.refuse("it has not as many cells as the table has fields");
    return true;
  }

  engine::Value value(std::size_t field) override {
    if (row_[field].null) return engine::Null{};
    try {
      return value_of_text(table_.fields[field].type, row_[field].text);
    } catch (const support::RuntimeError&) {
      file_.refuse(table_.fields[field].name + " is no value of its type");
    }
  }

 private:
  DelimitedFile file_;
  const jet_import::SourceTable& table_;
  std::vector<Cell> row_;
};

class CsvSource : public ExportedSource {
 public:
  explicit CsvSource(std::string folder) : folder_(std::move(folder)) {
    take([this](const LayoutTable& list) { return read_list(list); });
  }

  std::unique_ptr<jet_import::SourceRows> rows(std::size_t table) override {
    const StoredTable& stored = this->stored(table);
    // It must be a name, not a path to another folder.
    if (support::std_path(stored.file).filename() != support::std_path(stored.file)) {
      throw support::RuntimeError(unknown_format, "_tables.csv leads out of its folder.");
    }
    const bool utf8 = stored.encoding == encoding_name(TextEncoding::Utf8);
    if (!utf8 && stored.encoding != encoding_name(TextEncoding::Cp1252)) {
      throw support::RuntimeError(unknown_format, "_tables.csv names an encoding that is unknown.");
    }
    return std::make_unique<CsvRows>(file_in(folder_, stored.file), utf8 ? TextEncoding::Utf8 : TextEncoding::Cp1252,
                                     tables()[table]);
  }

 private:
  std::vector<TextRow> read_list(const LayoutTable& list) const {
    DelimitedFile file(file_in(folder_, std::string(list.name) + ".csv"), TextEncoding::Utf8);
    std::vector<TextRow> rows;
    std::vector<Cell> cells;
    for (bool names = true; file.next(cells); names = false) {
      TextRow row;
      for (Cell& cell : cells) row.push_back(std::move(cell.text));
      if (names && row != list.columns) file.refuse("the columns are not those of an export");
      if (!names) rows.push_back(std::move(row));
    }
    return rows;
  }

  std::string folder_;
};

/// Orders rows as they were added. Empty where fields of the table hide every name of the row's number.
std::string in_order(const jet_import::SourceTable& table) {
  for (const std::string_view name : {"rowid", "_rowid_", "oid"}) {
    const bool taken = std::ranges::any_of(
        table.fields, [&](const auto& field) { return support::equal_ignoring_case(field.name, name); });
    if (!taken) return " ORDER BY " + std::string(name);
  }
  return {};
}

class PlainTableRows : public jet_import::SourceRows {
 public:
  PlainTableRows(embedded::PlainFile& file, const jet_import::SourceTable& table) : table_(table) {
    std::string sql = "SELECT ";
    for (const jet_import::SourceField& field : table.fields) {
      sql += (&field == table.fields.data() ? "" : ", ") + sql_name(field.name);
    }
    rows_ = file.rows(sql + " FROM " + sql_name(table.name) + in_order(table));
  }

  bool next() override { return rows_->next(); }

  engine::Value value(std::size_t field) override {
    using enum engine::DataType;
    engine::Value value = rows_->value(static_cast<int>(field));
    const engine::DataType type = table_.fields[field].type;
    if (engine::is_null(value)) return value;
    if (const auto* text = std::get_if<std::string>(&value)) return value_of_text(type, *text);
    // Only the program that stored a number in place of a date or a text knows what it means.
    if (type == Date || engine::is_text(type)) engine::raise(cannot_convert);
    if (type == Single || type == Double) return value;
    const auto* number = std::get_if<std::int32_t>(&value);
    if (!number) engine::raise(cannot_convert);
    return type == Boolean ? engine::Value(*number != 0) : value;
  }

 private:
  const jet_import::SourceTable& table_;
  std::unique_ptr<embedded::PlainRows> rows_;
};

class PlainSource : public ExportedSource {
 public:
  explicit PlainSource(const std::string& host_path) : file_(embedded::open_plain_file(host_path)) {
    take([this](const LayoutTable& list) { return read_list(list); });
    for (const jet_import::SourceTable& table : tables()) require_table(table.name);
  }

  std::unique_ptr<jet_import::SourceRows> rows(std::size_t table) override {
    return std::make_unique<PlainTableRows>(*file_, tables()[table]);
  }

 private:
  void require_table(std::string_view name) const {
    if (file_->has_table(name)) return;
    throw support::RuntimeError(unknown_format, "The file has no table " + std::string(name) + ": it is no export.");
  }

  std::vector<TextRow> read_list(const LayoutTable& list) const {
    require_table(list.name);
    std::string sql = "SELECT ";
    for (const std::string& column : list.columns)
      sql += (&column == list.columns.data() ? "" : ", ") + sql_name(column);
    const auto found = file_->rows(sql + " FROM " + sql_name(list.name) + " ORDER BY rowid");
    std::vector<TextRow> rows;
    while (found->next()) {
      TextRow& row = rows.emplace_back();
      for (std::size_t i = 0; i < list.columns.size(); ++i) {
        row.push_back(text_of(found->value(static_cast<int>(i))));
      }
    }
    return rows;
  }

  std::unique_ptr<embedded::PlainFile> file_;
};

/// The one file of an export as sqlite; empty where there is none.
std::string plain_file_in(const std::string& folder) {
  std::error_code failure;
  for (fs::directory_iterator entry(support::std_path(folder), failure), end; !failure && entry != end;
       entry.increment(failure)) {
    if (entry->path().extension() == ".sqlite") return support::host_path_of(entry->path());
  }
  return {};
}

}  // namespace

std::unique_ptr<jet_import::Source> open_exported(const std::string& host_path) {
  std::error_code failure;
  if (!fs::is_directory(support::std_path(host_path), failure)) {
    if (!embedded::is_plain_file(host_path)) return nullptr;
    return std::make_unique<PlainSource>(host_path);
  }
  if (fs::exists(support::std_path(file_in(host_path, "_tables.csv")), failure)) {
    return std::make_unique<CsvSource>(host_path);
  }
  const std::string file = plain_file_in(host_path);
  if (file.empty()) throw support::RuntimeError(unknown_format, "The folder holds no export as csv or sqlite.");
  return std::make_unique<PlainSource>(file);
}

}  // namespace transfer
