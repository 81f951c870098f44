// What the patient's database holds when a run begins, read in one opening: what the pages are filled with.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "database/default_medication.h"
#include "database/patient.h"
#include "database/settings.h"
#include "database/therapy_plan.h"

namespace wizard {

/// Without a database, or where one cannot be read, the patient is empty and the targets are the preferred ones.
struct Stored {
  database::PatientRecord patient;
  database::SettingsRecord settings;
  database::DefaultInsulin usual;                    ///< the patient's usual insulins
  database::TherapyPlan newest;                      ///< the newest plan
  std::array<std::string, 3> drugs;                  ///< names
  std::vector<database::PreferredInsulin> insulins;  ///< to choose from; of the lookup database for a new patient
};

}  // namespace wizard
