// What a finish will store: the choices of the pages, put over what is stored now. Summary, preview, finish and
// findings read this record and nothing else, so what is shown is what is written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/patient.h"
#include "database/settings.h"
#include "database/therapy_plan.h"
#include "support/error.h"
#include "wizard/option_groups.h"

namespace wizard {

struct Context;
struct Pages;

/// The parts of a known database that a finish works on. Without a database, and in the professional edition, which
/// touches none, the patient is empty and there is no plan.
struct StoredNow {
  database::PatientRecord patient;
  database::SettingsRecord settings;
  std::optional<database::TherapyPlan> newest;  ///< the newest plan
  bool usable = false;                          ///< the database could be read: only then is anything written to it
  bool settings_read = false;                   ///< it has a row of settings; else the settings are the presets
  bool plan_unread = false;                     ///< its newest plan could not be read
  std::optional<support::RuntimeError> failure = {};  ///< why the database or the plan could not be read
};

struct OptionChoice {
  const OptionGroup* group = nullptr;
  int option = 0;
  std::string_view word() const { return group->words[static_cast<std::size_t>(option)]; }
};

struct ChartChoice {
  std::string key, title;
  bool chosen = false;
};

struct SchemeChoice {
  std::int32_t id = 0;
  std::string name;
  bool changed = false;  ///< another one than at start-up
};

struct Choices {
  StoredNow stored;
  database::PatientRecord patient;
  database::SettingsRecord settings;
  std::vector<OptionChoice> options;   ///< one for each group, in the order in which they are written
  std::vector<ChartChoice> charts;     ///< all that were offered; empty where the page was never shown
  std::optional<SchemeChoice> scheme;  ///< nothing where none is selected
  database::PlanChoices therapy;       ///< insulins and drugs of the pages that this run offers
  database::TherapyPlan plan;          ///< the plan in force afterwards
  bool plan_changed = false;           ///< false: the newest plan says it already, and none is saved
  std::string folder;                  ///< of the patients
  std::string database;                ///< what "DataBaseName" will say: the known or the new one; empty: none
  bool new_database = false;           ///< none was known at start-up
  std::string refused_database;        ///< a new one that is not made, because the registry could not name it

  /// The option chosen in the group of these controls, from 0; raises 340 where there is no such group.
  int option(std::string_view controls) const;
};

/// What the finish would store now. Reads the known database anew, since another program may have changed it since the
/// start, and looks which name a new one gets. Never raises.
Choices gather_choices(const Context& context, const Pages& pages);

/// The same from what was read at the start, without a look at any file: quick enough for each key that is typed. It
/// names no database.
Choices gather_pages(const Context& context, const Pages& pages);

}  // namespace wizard
