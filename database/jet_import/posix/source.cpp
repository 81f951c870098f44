#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "database/jet_import/posix/mdb_file.h"

namespace jet_import {
namespace {

constexpr int western_code_page = 1252;

/// While this object lives, libmdb writes nothing to the standard error stream. The errors that are raised here tell
/// the user.
class Quiet {
 public:
  Quiet() {
    static FILE* const nowhere = std::fopen("/dev/null", "w");
    if (nowhere) stderr = nowhere;
  }
  ~Quiet() { stderr = before_; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  FILE* before_ = stderr;
};

/// Walks the rows of a table. `fields` are the present row's, in no particular order.
class MdbWalk {
 public:
  MdbWalk(MdbHandle& file, MdbTableDef& table) : file_(file), table_(table), fields_(table.num_cols) {
    mdb_rewind_table(&table);
  }

  bool next() {
    if (mdb_fetch_row(&table_) == 0) return false;
    constexpr int offset_mask = 0x1FFF;
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_row(&file_, static_cast<int>(table_.cur_row) - 1, &start, &size) != 0 ||
        mdb_crack_row(&table_, start & offset_mask, size, fields_.data()) < 0) {
      throw support::RuntimeError(support::error_number::unknown_format, "a row cannot be read: the file is damaged");
    }
    return true;
  }

  const std::vector<MdbField>& fields() const noexcept { return fields_; }
  const MdbColumn* column(const MdbField& field) const {
    return static_cast<const MdbColumn*>(g_ptr_array_index(table_.columns, field.colnum));
  }

 private:
  MdbHandle& file_;
  MdbTableDef& table_;
  std::vector<MdbField> fields_;
};

class MdbRows : public SourceRows {
 public:
  MdbRows(MdbHandle& file, JetVersion version, MdbTableDef& table)
      : file_(file), version_(version), columns_(held_columns(table)), walk_(file, table) {}

  bool next() override {
    const Quiet quiet;
    return walk_.next();
  }

  engine::Value value(std::size_t field) override {
    const Quiet quiet;
    for (const MdbField& candidate : walk_.fields()) {
      if (walk_.column(candidate) == columns_[field]) return mdb_value(file_, version_, *columns_[field], candidate);
    }
    throw support::RuntimeError(support::error_number::unknown_format, "a row lacks the field: the file is damaged");
  }

 private:
  MdbHandle& file_;
  JetVersion version_;
  std::vector<const MdbColumn*> columns_;
  MdbWalk walk_;
};

/// libmdb passes over what it cannot read in the list of tables and in their properties.
void check_catalogue(MdbHandle& file) {
  const auto entries = catalogue_entries(file);
  const auto found = std::ranges::find_if(
      entries, [](const MdbCatalogEntry* entry) { return std::string_view(entry->object_name) == "MSysObjects"; });
  std::size_t rows = 0;
  if (found != entries.end()) {
    const MdbTablePointer table = read_table(**found);
    for (MdbWalk walk(file, *table); walk.next(); ++rows) {
      for (const MdbField& field : walk.fields()) {
        if (walk.column(field)->col_type == MDB_OLE && field.is_null == 0) mdb_long_value(file, field);
      }
    }
    if (rows == entries.size() && (rows == table->num_rows || table->num_rows == 0)) return;
  }
  throw support::RuntimeError(support::error_number::unknown_format,
                              "Unrecognized database format: the list of tables is not whole.");
}

class MdbSource : public Source {
 public:
  MdbSource(MdbFilePointer file, JetVersion version) : file_(std::move(file)), version_(version) {
    for (MdbCatalogEntry* entry : user_tables(*file_)) {
      definitions_.push_back(read_table(*entry));
      tables_.push_back(describe(*definitions_.back(), version));
    }
    linked_tables_ = jet_import::linked_tables(*file_);
  }

  const std::vector<SourceTable>& tables() const override { return tables_; }
  const std::vector<std::string>& linked_tables() const override { return linked_tables_; }
  std::unique_ptr<SourceRows> rows(std::size_t table) override {
    return std::make_unique<MdbRows>(*file_, version_, *definitions_[table]);
  }

 private:
  MdbFilePointer file_;
  JetVersion version_;
  std::vector<MdbTablePointer> definitions_;
  std::vector<SourceTable> tables_;
  std::vector<std::string> linked_tables_;
};

JetHeader header_of(const std::string& host_path) {
  std::error_code failure;
  if (!std::filesystem::is_regular_file(host_path, failure)) {
    throw support::RuntimeError(support::error_number::file_not_found, "Could not find file '" + host_path + "'.");
  }
  std::ifstream file(host_path, std::ios::binary);
  if (!file)
    throw support::RuntimeError(support::error_number::file_not_opened,
                                "The file '" + host_path + "' cannot be opened.");
  std::string beginning(jet_header_size, '\0');
  file.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
  beginning.resize(static_cast<std::size_t>(file.gcount()));
  JetHeader header = read_jet_header(beginning);
  const std::uintmax_t page_size = header.version == JetVersion::Jet3 ? 2048 : 4096;
  if (std::filesystem::file_size(host_path, failure) % page_size != 0) {
    throw support::RuntimeError(support::error_number::unknown_format,
                                "Unrecognized database format: the file's last page is not whole.");
  }
  return header;
}

}  // namespace

std::unique_ptr<Source> open_source(const database::Environment& environment, std::string_view path,
                                    std::string_view password) {
  const std::string host_path = environment.file_system().host_path(path);
  const JetHeader header = header_of(host_path);
  if (!header.password.empty() && header.password != password) {
    throw support::RuntimeError(support::error_number::wrong_password, "Not a valid password.");
  }
  if (header.version == JetVersion::Jet3 && header.code_page != western_code_page) {
    throw support::RuntimeError(support::error_number::unknown_format,
                                fmt::format("Texts of code page {} are not understood.", header.code_page));
  }
  const Quiet quiet;
  MdbFilePointer file(mdb_open(host_path.c_str(), MDB_NOFLAGS));
  if (!file || !mdb_read_catalog(file.get(), MDB_ANY)) {
    throw support::RuntimeError(support::error_number::unknown_format,
                                "Unrecognized database format: the list of tables cannot be read.");
  }
  check_catalogue(*file);
  return std::make_unique<MdbSource>(std::move(file), header.version);
}

}  // namespace jet_import
