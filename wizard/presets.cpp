#include "wizard/presets.h"

#include <algorithm>

#include "database/default_medication.h"
#include "database/file_failure.h"
#include "database/open_database.h"
#include "support/error.h"
#include "wizard/option_groups.h"
#include "wizard/page_list.h"

namespace wizard {

namespace {

struct PreferenceRow {
  std::string_view value_name;
  std::string_view fallback;
  std::int16_t database::SettingsRecord::*member;
};

/// The targets of a patient without a database.
constexpr PreferenceRow preferences[] = {
    {"BGHypo", "50", &database::SettingsRecord::BGHypo},
    {"BGHyper", "170", &database::SettingsRecord::BGHyper},
    {"BGTargetFrom", "70", &database::SettingsRecord::BGTargetMin},
    {"BGTargetUntil", "150", &database::SettingsRecord::BGTargetMax},
    {"BPSysFrom", "100", &database::SettingsRecord::BPTargetSysMin},
    {"BPSysUntil", "130", &database::SettingsRecord::BPTargetSysMax},
    {"BPDiaFrom", "70", &database::SettingsRecord::BPTargetDiaMin},
    {"BPDiaUntil", "90", &database::SettingsRecord::BPTargetDiaMax},
};

database::SettingsRecord preferred_settings(const Context& context) {
  support::Procedure procedure{"wizard!Preferences"};
  database::SettingsRecord settings;
  const std::string key = context.config.RegKey + "\\PREFERENCES";
  for (const PreferenceRow& row : preferences) {
    settings.*row.member = engine::to_int16(std::string(row.fallback));
    procedure.step(
        [&] { settings.*row.member = engine::to_int16(context.user_value(key, row.value_name, row.fallback)); });
  }
  return settings;
}

std::vector<database::PreferredInsulin> offered_insulins(const Context& context, const database::Target& source) {
  std::vector<database::PreferredInsulin> insulins;
  database::db_GetPreferredInsulin(context.environment(), source, insulins);
  return insulins;
}

void read_database(const Context& context, engine::Database& known, Stored& stored) {
  const database::Environment environment = context.environment();
  database::db_GetPatient(environment, known, 0, stored.patient);
  database::db_GetSettings(environment, known, stored.settings);
  stored.insulins = offered_insulins(context, known);
  database::db_GetDefaultInsulin(environment, known, stored.usual);
  database::db_GetTherapyPlan(environment, known, std::nullopt, stored.newest);
  database::db_GetDefaultOAD(environment, known, stored.drugs);
}

/// Reads everything that is kept in the database, in one opening.
Stored read_stored(Context& context, Pages& pages) {
  support::Procedure procedure{"wizard!PresetDatabase"};
  Stored stored;
  database::OpenPatient open;
  const std::string& path = context.config.CurrentDB;
  const support::Outcome outcome = support::outcome_of([&] {
    if (!path.empty())
      procedure.step([&] { open = database::open_patient_database(context.environment(), path, true); });
    if (!path.empty() && procedure.pending()) pages.database_failure = procedure.error();
    procedure.step([&] { stored.settings = preferred_settings(context); });
    procedure.step([&] {
      if (open.database)
        read_database(context, *open.database, stored);
      else if (path.empty() && support::file_test(*context.ports.files, context.config.LookupDB))
        stored.insulins = offered_insulins(context, context.config.LookupDB);
    });
  });
  const auto file_failure = outcome.first(database::is_file_failure);
  pages.database_read = open.database && !file_failure;
  if (file_failure) pages.database_failure = file_failure;
  return stored;
}

void build_steps(Context& context, Pages& pages) {
  InstallationConfig& config = context.config;
  for (form::Control* page : context.form.array("contstep")) page->set_visible(false);
  config.DBPassword = database::default_password;
  pages.HasCurrentDB = config.ProEdition || !config.CurrentDB.empty();
  const std::string configured = context.ini_value(config.Path + "pelmar.ini", "setup", "display");
  pages.steps.choose(configured.empty() ? default_steps(config.ProEdition) : configured);
  context.form.at("pbar").set_maximum(std::max(pages.steps.last(), 1));
}

}  // namespace

void build_and_preset(Context& context, Pages& pages) {
  support::Procedure procedure{"wizard!Presets"};
  procedure.step([&] { build_steps(context, pages); });
  procedure.step([&] { preset_options(context); });
  const Stored stored = read_stored(context, pages);
  pages.stored.patient = stored.patient;
  pages.stored.settings = stored.settings;
  pages.stored.usable = pages.database_read;
  pages.stored.settings_read = true;
  if (stored.newest.id != 0) pages.stored.newest = stored.newest;
  for (const Page* page : all_pages())
    if (page->preset) procedure.step([&] { page->preset(context, pages, stored); });
}

}  // namespace wizard
