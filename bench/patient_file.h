// The patient whose database the jobs create and read, and the names of their files.
#pragma once

#include <filesystem>
#include <string>

#include "database/creation/create_database.h"
#include "support/file_system.h"

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

/// The path by which the database procedures know a file.
inline std::string windows_path(const std::filesystem::path& path) {
  return support::host_file_system().windows_path(path.string());
}

/// Creates the database. Throws the error that makes it fail.
inline void create_patient_file(const std::filesystem::path& path) {
  const database::Environment environment;
  database::create_patient_database(environment, windows_path(path), environment.patient_password(), sample_patient(),
                                    {});
}

}  // namespace bench
