#include "apps/patientdb/patient_arguments.h"

namespace patientdb {

database::PatientRecord patient_argument(const console::Arguments& arguments) {
  database::PatientRecord patient;
  patient.name = arguments.value(name_option.name).value_or("");
  patient.firstname = arguments.value(firstname_option.name).value_or("");
  patient.typ = static_cast<std::int16_t>(arguments.number(diabetes_type_option.name, 0, 1, 4));
  patient.therapy = static_cast<std::int16_t>(arguments.number(therapy_option.name, 0, 1, 5));
  return patient;
}

}  // namespace patientdb
