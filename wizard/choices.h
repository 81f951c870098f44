// What a finish will store: the choices of the pages over what is stored now. Summary, preview, finish and findings
// read this record and nothing else, so what is shown is what is written.
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

/// The parts of a known database that a finish changes. The patient is empty and there is no plan without a database,
/// and in the professional edition, which changes no patient's database.
struct StoredNow {
  database::PatientRecord patient;
  database::SettingsRecord settings;
  std::optional<database::TherapyPlan> newest;        ///< the newest plan
  bool usable = false;                                ///< the database could be read; else nothing is written to it
  bool settings_read = false;                         ///< it has a row of settings; else the settings are the presets
  bool plan_unread = false;                           ///< its newest plan could not be read
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
  bool changed = false;  ///< it differs from the one at start-up
};

struct Choices {
  StoredNow stored;
  database::PatientRecord patient;
  database::SettingsRecord settings;
  std::vector<OptionChoice> options;   ///< one for each group, in the order in which they are written
  std::vector<ChartChoice> charts;     ///< all that were offered; empty where the page was never shown
  std::optional<SchemeChoice> scheme;  ///< nothing if none is selected
  database::PlanChoices therapy;       ///< insulins and drugs of the pages that this run offers
  database::TherapyPlan plan;          ///< the plan in force afterwards
  bool plan_changed = false;           ///< false: the newest plan has this content already, and none is saved
  std::string folder;                  ///< the folder of the patients
  std::string database;                ///< the value of "DataBaseName": the known or the new database; empty: none
  bool new_database = false;           ///< none was known at start-up
  std::string refused_database;        ///< a new database that is not made, because the registry cannot hold its name

  /// The option chosen in the group of these controls, from 0. Raises 340 if there is no such group.
  int option(std::string_view controls) const;
};

/// What the finish would store now. Reads the known database again, because another program may have changed it since
/// the start, and finds the name that a new database gets. Never raises.
Choices gather_choices(const Context& context, const Pages& pages);

/// The same from what was read at the start, without reading any file. It is fast enough to be called for each key that
/// is typed. It names no database.
Choices gather_pages(const Context& context, const Pages& pages);

}  // namespace wizard
