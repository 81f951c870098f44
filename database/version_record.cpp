#include "database/version_record.h"

#include <algorithm>

#include "database/columns.h"
#include "database/open_database.h"
#include "support/encoding.h"
#include "support/text.h"

namespace database {
namespace {

/// The columns are written in this order.
constexpr Column<VersionRecord> version_columns[] = {
    {"MajVersion", &VersionRecord::MajVersion},
    {"MinVersion", &VersionRecord::MinVersion},
    {"Password", &VersionRecord::Password},
    {"Type", &VersionRecord::Type},
    {"Desc", &VersionRecord::Desc},
    {"LastChanged", &VersionRecord::LastChanged},
    {"LastBackup", &VersionRecord::LastBackup},
    {"Created", &VersionRecord::Created},
    {"LastUser", &VersionRecord::LastUser},
    {"LastCompressed", &VersionRecord::LastCompressed},
    {"LastArchive", &VersionRecord::LastArchive},
    {"lAvailableData", &VersionRecord::lAvailableData},
    {"sAvailableData", &VersionRecord::sAvailableData},
};

constexpr std::string_view product_words[] = {"vantrix", "trenmoor"};

/// Without these columns nobody knows the layout, and a default would pass for the current one.
bool is_version(std::string_view column) { return column == "MajVersion" || column == "MinVersion"; }

/// Older layouts lack some columns, and their rows hold Null in columns that were added later. Neither means that the
/// database is foreign.
void read_column(const engine::Recordset& row, const Column<VersionRecord>& column, VersionRecord& record) {
  const std::string name(column.name);
  const bool there = has_column(row, name);
  if (!there && is_version(name))
    throw support::RuntimeError(support::error_number::item_not_found, "The version record has no " + name + ".");
  const engine::Value value = there ? row.value(name) : engine::Value(engine::Null{});
  if (!engine::is_null(value)) return assign_column(record, column, value);
  if (there && is_version(name))
    throw support::RuntimeError(support::error_number::invalid_null, name + " of the version record is Null.");
}

bool is_product(std::string_view description) {
  return std::any_of(std::begin(product_words), std::end(product_words), [&](std::string_view word) {
    return support::find_ignoring_case(description, word) != std::string_view::npos;
  });
}

}  // namespace

VersionRecord new_version_record(const Environment& environment) {
  VersionRecord record;
  record.Desc = environment.product_description;
  record.Password = environment.patient_password();
  record.LastChanged = record.Created = record.LastBackup = environment.present();
  return record;
}

bool db_ReadDBInfo(const Environment& environment, const Target& target, VersionRecord& record) {
  support::Procedure procedure{"sql!db_ReadDBInfo"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  const auto row = try_open_row(procedure, opened, "SELECT * FROM db_info");
  if (!row) return false;
  std::string description;
  procedure.step([&] { description = engine::to_text(row->value("Desc")); });
  for (const auto& column : version_columns) {
    procedure.step([&] { read_column(*row, column, record); });
  }
  record.Password = support::trim(record.Password);
  record.sAvailableData = support::trim(record.sAvailableData);
  return !procedure.pending() && is_product(description);
}

bool write_version_record(support::Procedure& procedure, engine::Database& database, const VersionRecord& record) {
  VersionRecord stored = record;
  // Both texts are stored with a blank at their end; readers trim it.
  stored.Password += " ";
  stored.sAvailableData += " ";
  std::unique_ptr<engine::Recordset> row;
  procedure.step([&] { row = database.open_recordset("db_info"); });
  if (!row || !procedure.step([&] { edit_or_add(*row); })) return false;
  write_columns<VersionRecord>(procedure, *row, version_columns, stored);
  return procedure.step([&] { row->update(); });
}

}  // namespace database
