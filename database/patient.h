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
  std::int16_t therapy = 0;
  std::optional<engine::Date> birthday;  ///< nothing: not entered
  std::uint8_t gender = 0;               ///< 0 female, 1 male
  std::string email, a1, a2, a3;
  std::int16_t typ = 0;     ///< diabetes type
  std::int16_t height = 0;  ///< cm
  std::string number, insurance, insurancenumber;
  /// Years; -1 not entered.
  std::int16_t DiabetesSince = -1, OADSince = -1, InsulinSince = -1, CPeptid = -1;
  /// Number in an external system, and the patient's row in the index database; not columns of `patdat`.
  std::string external_id;
  std::int32_t index_id = 0;
};

/// Stores the patient: adds the row with this id or overwrites it. 1 when stored, 0 otherwise.
std::int16_t db_AddPatient(const Environment& environment, const Target& target, const PatientRecord& patient);

/// Reads the patient; keeps every column that could not be read as it was. An id above 0 selects by `pat_id`. True when
/// a row was read.
bool db_GetPatient(const Environment& environment, const Target& target, std::int32_t patient_id,
                   PatientRecord& patient);

struct PreferredInsulin {
  bool rapid = false;
  double bolusie = 0, basalie = 0;  ///< kind markers as stored
  std::string desc, manufacturer;
};

std::string SQL_GetPreferredInsulin();

/// Fills `entries` in the order of sort position and manufacturer and returns their number; an id above 0 appends its
/// clause.
std::int32_t db_GetPreferredInsulin(const Environment& environment, const Target& target,
                                    std::vector<PreferredInsulin>& entries, std::int32_t patient_id = 0);

}  // namespace database
