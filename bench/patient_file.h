// The patient whose database the jobs create and read.
#pragma once

#include <filesystem>
#include <string>

#include "database/create_database.h"

namespace bench {

inline database::PatientRecord sample_patient() {
  database::PatientRecord patient;
  patient.name = "Müller";
  patient.firstname = "Jörg";
  patient.street = "Lindenstraße 7";
  patient.city = "Berlin";
  patient.typ = 2;
  patient.therapy = 4;
  return patient;
}

/// Creates the database through CreatePatientDatabase; throws where that fails.
inline void create_patient_file(const std::filesystem::path& path) {
  support::RuntimeError failure(51, "not created");
  const std::string name = support::host_file_system().windows_path(path.string());
  if (database::CreatePatientDatabase({}, name, sample_patient(), {}, &failure) != 1) throw failure;
}

}  // namespace bench
