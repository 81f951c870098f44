// The patient record (`patdat`) and the preferred insulins (`preferredInsulin`).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/environment.h"

namespace database {

struct PatientRecord {
  std::int16_t id = 0;
  std::string firstname, name, street, zip, city, phone, fax;
  /// 1 conventional, 2 intensified, 3 pump, 4 insulin and tablets, 5 without insulin; 0 none.
  std::int16_t therapy = 0;
  std::optional<engine::Date> birthday;  ///< nothing: not entered
  std::uint8_t gender = 0;               ///< 0 female, 1 male
  std::string email;
  std::string a1, a2, a3;   ///< three lines of the practice
  std::int16_t typ = 0;     ///< 1 type 1, 2 type 2, 3 gestational, 4 other; 0 none
  std::int16_t height = 0;  ///< cm
  std::string number, insurance, insurancenumber;
  /// -1: not entered.
  std::int16_t DiabetesSince = -1, OADSince = -1, InsulinSince = -1, CPeptid = -1;
  /// The number in an external system, and the patient's row in the index database. Neither is a column of `patdat`.
  std::string external_id;
  std::int32_t index_id = 0;
};

/// Stores the patient: adds the row with this id or overwrites it. Returns 1 when stored, else 0. A column that cannot
/// take its value is passed over.
std::int16_t db_AddPatient(const Environment& environment, const Target& target, const PatientRecord& patient);

/// Reads the patient; an id above 0 selects by `pat_id`. Returns true when a row was read. Columns that could not be
/// read stay as they were, and so does all of `patient` where it returns false.
bool db_GetPatient(const Environment& environment, const Target& target, std::int32_t patient_id,
                   PatientRecord& patient);

/// A preferred insulin. Three marks show its kind: bolus and basal above 0 (both: a mixture), and rapid.
struct PreferredInsulin {
  bool rapid = false;
  double bolusie = 0, basalie = 0;  ///< as stored; an insulin's text uses them as its shares
  std::string desc;                 ///< name
  std::string manufacturer;
};

/// The statement that selects all of them, without an order.
std::string SQL_GetPreferredInsulin();

/// Fills `entries`, ordered by sort position and manufacturer, and returns their number. Where they cannot be read,
/// there are none and it returns 0. An id above 0 appends the clause of a patient; its form is fixed, and the engine
/// refuses it.
std::int32_t db_GetPreferredInsulin(const Environment& environment, const Target& target,
                                    std::vector<PreferredInsulin>& entries, std::int32_t patient_id = 0);

}  // namespace database
