// Fills the pages from the registry, the patient's database and the therapy plan before the first page is shown.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "database/default_medication.h"
#include "database/patient.h"
#include "database/settings.h"
#include "database/therapy_plan.h"
#include "wizard/context.h"
#include "wizard/pages.h"

namespace wizard {

/// What the patient's database holds when a run begins, read in one opening. If there is no database, or it cannot be
/// read, the patient is empty and the targets are the preferred ones.
struct Stored {
  database::PatientRecord patient;
  database::SettingsRecord settings;
  database::DefaultInsulin usual;                    ///< the patient's usual insulins
  database::TherapyPlan newest;                      ///< the newest plan
  std::array<std::string, 3> drugs;                  ///< names
  std::vector<database::PreferredInsulin> insulins;  ///< to choose from; for a new patient, from the lookup database
};

/// Builds the step list for the edition or from "pelmar.ini", and presets every control. What cannot be read keeps its
/// default.
void build_and_preset(Context& context, Pages& pages);

}  // namespace wizard
