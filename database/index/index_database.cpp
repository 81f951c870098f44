#include "database/index/index_database.h"

#include <fmt/core.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "database/availability.h"
#include "database/columns.h"
#include "database/file_failure.h"
#include "database/open_database.h"
#include "database/upgrade/ladder.h"
#include "database/version_record.h"
#include "support/encoding.h"
#include "support/user_locale.h"
#include "support/windows_path.h"

namespace database {
namespace {

using support::Procedure;

/// The categories that count as a patient's data: the eight kinds of entries and the laboratory values.
constexpr std::int32_t counted_categories = 0xFF | 1 << 9;
constexpr std::string_view hba1c_query = "SELECT * FROM labvalues WHERE type=11 ORDER BY vdate DESC";
constexpr std::string_view hba1c_range_query = "SELECT * FROM labdefs WHERE type= 11";

bool refreshes(std::int16_t action) { return action == 0 || action == 1 || action == 10; }
bool writes(std::int16_t action) { return action >= index_action::write; }
/// All other actions release the patient's devices.
bool keeps_devices(std::int16_t action) { return action < index_action::remove || action == 10; }

/// The new values of a row: field and value.
using RowValues = std::vector<std::pair<std::string_view, engine::Value>>;

std::unique_ptr<engine::Recordset> row_of(engine::Database& index, std::int32_t number) {
  return index.open_recordset(fmt::format("SELECT * FROM index WHERE id={}", number));
}

/// Adds a row. It passes over a number whose patient file exists, because the row would be taken for that patient's.
std::unique_ptr<engine::Recordset> new_row(const Environment& environment, engine::Database& index,
                                           std::unique_ptr<engine::Recordset> rows) {
  const std::string path = index.name();
  rows->add_new();
  std::int32_t id = engine::to_int32(rows->value("id"));
  if (patient_file(environment, path, id).empty()) return rows;
  rows->cancel_update();
  do ++id;
  while (!patient_file(environment, path, id).empty() || !row_of(index, id)->eof());
  index.execute(fmt::format("INSERT INTO index (id) VALUES ({})", id));
  auto row = row_of(index, id);
  row->edit();
  return row;
}

/// Fields that an index has only after its upgrade.
constexpr std::string_view fields_of_upgrade[] = {"last_open", "flag", "date_range", "last_hba1c", "hba1c"};

/// True for one of these fields where the index lacks it.
bool waits_for_upgrade(const engine::Recordset& row, std::string_view field) {
  const auto is_same = [field](std::string_view name) { return support::equal_ignoring_case(name, field); };
  return std::ranges::any_of(fields_of_upgrade, is_same) && !has_column(row, field);
}

/// Stores the values in the patient's row, or in a new one where there is none, and returns the row's id. A value that
/// the row does not take is left out. The transaction keeps others from using the number of a new row until it is
/// stored. Raises 3021 where there is no row and none may be added.
std::int32_t store_row(const Environment& environment, Procedure& procedure, engine::Database& index,
                       std::int32_t number, const RowValues& values, bool may_add) {
  engine::Transaction transaction{index};
  auto row = row_of(index, number);
  if (row->eof()) {
    if (!may_add)
      throw support::RuntimeError(support::error_number::no_current_record, "The database holds no patient.");
    row = new_row(environment, index, std::move(row));
  } else {
    row->edit();
  }
  const std::int32_t id = engine::to_int32(row->value("id"));
  for (const auto& [field, value] : values) {
    if (waits_for_upgrade(*row, field)) continue;
    procedure.step([&, &field = field, &value = value] { row->set_value(field, value); });
  }
  row->update();
  transaction.commit();
  return id;
}

RowValues values_of(const PatientRecord& patient) {
  RowValues values = {{"name", patient.name}, {"firstname", patient.firstname}};
  if (patient.birthday && patient.birthday->days != 0) values.emplace_back("dateofbirth", *patient.birthday);
  values.emplace_back("externalid", patient.external_id);
  values.emplace_back("diabetestyp", std::int32_t{patient.typ});
  values.emplace_back("therapy", std::int32_t{patient.therapy});
  return values;
}

/// Gathers the values of a row from the patient's own database before the index is touched: an upgrade may take long,
/// and others want to write to the index meanwhile.
class PatientReader {
 public:
  PatientReader(const Environment& environment, Procedure& procedure, engine::Database& database)
      : environment_(environment), procedure_(procedure), opened_(environment, database, OpenedTarget::Access::Read) {}

  /// Also writes the name into the record, for the devices. False where the database holds no patient.
  bool read_patient(PatientRecord& patient);
  void read_therapy();
  void read_last_change();
  void read_span();
  void read_hba1c();
  const RowValues& values() const noexcept { return values_; }

 private:
  std::unique_ptr<engine::Recordset> first_row(std::string_view sql) { return try_open_row(procedure_, opened_, sql); }
  void copy(const engine::Recordset& from, std::string_view field, std::string_view to) {
    procedure_.step([&] { values_.emplace_back(to, from.value(field)); });
  }
  std::string range_mark(double value);

  const Environment& environment_;
  Procedure& procedure_;
  OpenedTarget opened_;
  RowValues values_;
};

bool PatientReader::read_patient(PatientRecord& patient) {
  const auto row = first_row("SELECT * FROM patdat");
  if (!row) return false;
  copy(*row, "name", "name");
  copy(*row, "firstname", "firstname");
  copy(*row, "birthday", "dateofbirth");
  copy(*row, "typ", "diabetestyp");
  procedure_.step([&] {
    if (!has_column(*row, "externalID")) return;
    const engine::Value number = row->value("externalID");
    if (engine::to_double(number) != 0) values_.emplace_back("externalid", engine::to_text(number));
  });
  procedure_.step([&] { patient.name = engine::to_text(row->value("name")); });
  procedure_.step([&] { patient.firstname = engine::to_text(row->value("firstname")); });
  return true;
}

void PatientReader::read_therapy() {
  std::int32_t type = 0;
  if (const auto plan = first_row("SELECT * FROM therapieplan ORDER BY vdate DESC")) {
    procedure_.step([&] { type = engine::to_int32(plan->value("type")); });
  }
  values_.emplace_back("therapy", type == 0 ? 1 : type);
}

void PatientReader::read_last_change() {
  if (const auto info = first_row("SELECT * FROM db_info")) copy(*info, "lastchanged", "last_open");
}

void PatientReader::read_span() {
  AvailabilityRequest request;
  request.categories = counted_categories;
  const auto found = find_availability(environment_, *opened_.get(), request);
  std::int32_t count = 0;
  for (const Availability& category : found) count += category.count;
  values_.emplace_back("flag", count);
  if (count == 0) return;
  const auto days = [](const engine::Date& day) { return day.days; };
  const engine::Date first = std::ranges::min(found, {}, [&](const auto& entry) { return days(entry.first); }).first;
  const engine::Date last = std::ranges::max(found, {}, [&](const auto& entry) { return days(entry.last); }).last;
  values_.emplace_back("date_Range",
                       support::short_date_text(first.days) + " - " + support::short_date_text(last.days));
}

/// "|>" above the patient's range, "|<" below it. A limit of -1 means no limit.
std::string PatientReader::range_mark(double value) {
  const auto range = first_row(hba1c_range_query);
  if (!range || value < 0) return {};
  double from = -1, until = -1;
  procedure_.step([&] { from = engine::to_double(range->value("rangefrom")); });
  procedure_.step([&] { until = engine::to_double(range->value("rangeuntil")); });
  if (until >= 0 && value > until) return "|>";
  return from >= 0 && value < from ? "|<" : "";
}

void PatientReader::read_hba1c() {
  const auto newest = first_row(hba1c_query);
  if (!newest) return;
  copy(*newest, "vdate", "last_hba1c");
  procedure_.step([&] {
    const float value = engine::to_single(newest->value("value"));
    values_.emplace_back("hba1c", support::fixed_text(value, 1) + range_mark(value));
  });
}

/// Opens for reading where the file cannot be written. Raises the error that keeps it from being opened.
OpenPatient open_patient(const Environment& environment, std::string_view file) {
  try {
    return open_patient_database(environment, file, false);
  } catch (const support::RuntimeError& failure) {
    if (!may_still_be_read(failure)) throw;
    return open_patient_database(environment, file, true);
  }
}

/// Opens the patient's database, after an upgrade where its layout calls for one. Raises the error that kept it from
/// being read or upgraded.
OpenPatient open_current_patient(const Environment& environment, std::string_view file, IndexOutcome& outcome) {
  OpenPatient open = open_patient(environment, file);
  VersionRecord record;
  bool is_due = false;
  support::outcome_of([&] {
    is_due = db_ReadDBInfo(environment, *open.database, record) && needs_upgrade(record);
  }).raise_first(is_file_failure);
  if (!is_due) return open;
  std::unique_ptr<engine::Recordset> none;
  db_cleanup(open.engine, open.database, none);
  try {
    outcome.upgrade = upgrade_file(environment, file);
  } catch (const UpgradeFailure& failure) {
    outcome.kept_copy = failure.copy();
    throw;
  }
  return open_patient(environment, file);
}

std::int32_t refresh_row(const Environment& environment, Procedure& procedure, engine::Database& index,
                         PatientRecord& patient, std::string_view patient_database, IndexOutcome& outcome) {
  RowValues values;
  bool holds_patient = false;
  {
    const OpenPatient open = open_current_patient(environment, patient_database, outcome);
    support::outcome_of([&] {
      PatientReader reader(environment, procedure, *open.database);
      holds_patient = reader.read_patient(patient);
      reader.read_therapy();
      reader.read_last_change();
      reader.read_span();
      reader.read_hba1c();
      values = reader.values();
    }).raise_first(is_file_failure);
  }
  const std::int32_t id = store_row(environment, procedure, index, patient.index_id, values, holds_patient);
  patient.index_id = id;
  return id;
}

std::string in_folder(const std::string& folder, std::string_view file) {
  return folder + (folder.empty() || folder.ends_with('\\') ? "" : "\\") + std::string(file);
}

/// Names are written into the statement as they are, so a name with an apostrophe makes the statement fail.
void update_devices(const Environment& environment, Procedure& procedure, const PatientRecord& patient,
                    std::int16_t action) {
  const std::string path = in_folder(environment.data_folder, "meters.mdb");
  if (!support::file_test(environment.file_system(), path)) return;
  const OpenedTarget devices(environment, path, OpenedTarget::Access::Write);
  const std::string number = std::to_string(patient.index_id);
  procedure.step([&] {
    devices.database().execute(
        keeps_devices(action) ? "UPDATE meters set name='" + patient.name + "', firstname='" + patient.firstname +
                                    "' WHERE assignedto=" + number
                              : "UPDATE meters set name='', firstname='', assignedto=0 WHERE assignedto=" + number);
  });
}

}  // namespace

std::int32_t db_ProcessIndex(const Environment& environment, const Target& index, PatientRecord& patient,
                             std::int16_t action, std::string_view patient_database, IndexOutcome* outcome) {
  Procedure procedure{"sql!db_ProcessIndex"};
  IndexOutcome own;
  IndexOutcome& told = outcome ? *outcome : own;
  std::int32_t id = 0;
  {
    const OpenedTarget opened(environment, index, OpenedTarget::Access::Write);
    const bool done = procedure.guarded([&] {
      engine::Database& database = opened.database();
      if (writes(action)) {
        id = store_row(environment, procedure, database, patient.index_id, values_of(patient), true);
      } else if (refreshes(action)) {
        id = refresh_row(environment, procedure, database, patient, patient_database, told);
      } else if (action == index_action::remove) {
        database.execute(fmt::format("DELETE * FROM index WHERE id={}", patient.index_id));
      }
    });
    if (!done) told.failure = procedure.error();
  }
  update_devices(environment, procedure, patient, action);
  return id;
}

std::string patient_file(const Environment& environment, std::string_view index_path, std::int32_t patient_id) {
  const std::string file = fmt::format("db4_{:06}.das", patient_id);
  const auto exists = [&](const std::string& path) { return support::file_test(environment.file_system(), path); };
  std::string beside = in_folder(support::ExtractFromPath(index_path, 1), file);
  if (exists(beside)) return beside;
  const std::string path = in_folder(environment.data_folder, file);
  return path != beside && exists(path) ? path : "";
}

}  // namespace database
