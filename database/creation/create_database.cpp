#include "database/creation/create_database.h"

#include <string>

#include "database/new_file.h"
#include "database/schema/table_builder.h"
#include "database/table_procedures.h"
#include "database/upgrade/ladder.h"
#include "database/zone_table.h"

namespace database {
namespace {

namespace error_number = support::error_number;

/// The procedures below pass over what fails, but a new database must lack nothing. Two errors leave no gap: the repair
/// pass finds that its fields exist already, and an empty text in a field that takes none leaves it Null.
bool leaves_a_gap(const support::RuntimeError& error) {
  return error.number() != error_number::field_defined_twice && error.number() != error_number::zero_length;
}

/// Adds the fields `flag` and `importid` where a data table lacks them. A table of the present layout has both.
void repair_data_table(support::Procedure& procedure, engine::Database& database, std::string_view name) {
  constexpr std::pair<std::string_view, engine::DataType> fields[] = {{"flag", engine::DataType::Integer},
                                                                      {"importid", engine::DataType::Long}};
  for (const auto& field_row : fields) {
    procedure.step([&] {
      const auto table = database.table_defs().item(name);
      const auto field = table->create_field(field_row.first, field_row.second);
      field->set_default_value("0");
      field->set_required(false);
      table->fields().append(field);
    });
  }
}

void create_tables(const Environment& environment, engine::Database& database) {
  support::Procedure procedure{"sql!CreatePatientDatabase"};
  for (const schema::TableRow& row : schema::tables()) {
    create_table(environment, database, row.name);
    if (environment.progress) environment.progress->at_work();
  }
  for (const std::string_view name : schema::data_tables()) repair_data_table(procedure, database, name);
  for (const std::string_view name : schema::data_tables()) schema::allow_empty_texts(procedure, database, name);
}

/// Raises 3265 where a table lacks a field or an index.
void require(engine::Database& database, std::string_view name, std::size_t fields, std::size_t indexes) {
  const auto table = database.table_defs().item(name);
  if (static_cast<std::size_t>(table->fields().count()) < fields ||
      static_cast<std::size_t>(table->indexes().count()) < indexes) {
    throw support::RuntimeError(error_number::item_not_found, "the table " + std::string(name) + " is not complete");
  }
}

void require_all_tables(engine::Database& database) {
  for (const schema::TableRow& row : schema::tables()) {
    require(database, row.name, row.fields.size(), row.indexes.size());
  }
  for (const schema::DocumentationTable* table : {&schema::treatment_profile, &schema::normal_values}) {
    require(database, table->name, table->fields.size(), table->indexes.size());
  }
}

void write_records(const Environment& environment, engine::Database& database, const PatientRecord& patient,
                   SettingsRecord settings) {
  db_AddPatient(environment, database, patient);
  GetTimeZones(environment, database, settings.zones, true);
  db_SaveSettings(environment, database, settings);
  VersionRecord version = new_version_record(environment);
  db_WriteDBInfo(environment, database, version);
  GetTimeZones(environment, database, settings.zones, true);
  db_AddTimeZonesToPatient(environment, database, settings.zones);
}

void fill(const Environment& environment, engine::Database& database, const PatientRecord& patient,
          const SettingsRecord& settings) {
  // A property that an engine refuses leaves no gap. A table that is not complete fails, with the reason.
  const support::Outcome tables = support::outcome_of([&] { create_tables(environment, database); });
  try {
    require_all_tables(database);
  } catch (const support::RuntimeError&) {
    tables.raise_first(leaves_a_gap);
    throw;
  }
  support::outcome_of([&] { write_records(environment, database, patient, settings); }).raise_first(leaves_a_gap);
}

}  // namespace

void create_patient_database(const Environment& environment, std::string_view path, std::string_view password,
                             const PatientRecord& patient, const SettingsRecord& settings) {
  NewFile file{environment, path, password};
  {
    engine::Transaction transaction{file.database()};
    fill(environment, file.database(), patient, settings);
    transaction.commit();
  }
  file.finish();
}

std::int16_t CreatePatientDatabase(const Environment& environment, std::string_view path, const PatientRecord& patient,
                                   const SettingsRecord& settings) {
  support::Procedure procedure{"sql!CreatePatientDatabase"};
  const bool created = procedure.guarded(
      [&] { create_patient_database(environment, path, environment.patient_password(), patient, settings); });
  return created ? 1 : 0;
}

std::int16_t CreateIndexDatabase(const Environment& environment, std::string_view path) {
  support::Procedure procedure{"sql!CreateIndexDatabase"};
  const bool created = procedure.guarded([&] {
    NewFile file{environment, path, ""};
    {
      engine::Transaction transaction{file.database()};
      schema::create_table(file.database(), schema::index_table);
      require(file.database(), schema::index_table.name, schema::index_table.fields.size(), 0);
      transaction.commit();
    }
    file.finish();
  });
  return created ? 1 : 0;
}

}  // namespace database
