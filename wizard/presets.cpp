#include "wizard/presets.h"

#include <algorithm>

#include "database/default_medication.h"
#include "database/file_failure.h"
#include "database/open_database.h"
#include "support/error.h"
#include "wizard/drug_page.h"
#include "wizard/folder_page.h"
#include "wizard/option_groups.h"
#include "wizard/page_display.h"
#include "wizard/patient_page.h"
#include "wizard/therapy_kind.h"

namespace wizard {

namespace {

constexpr int chart_limit = 4;

struct PreferenceRow {
  std::string_view value_name;
  std::string_view fallback;
  std::int16_t database::SettingsRecord::*member;
};

/// Targets of a patient without a database.
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

/// Without a database, or where one cannot be read, the fields stay empty and the targets are the preferred ones.
void preset_patient(Context& context, Pages& pages, engine::Database* known) {
  fill_patient_lists(context);
  database::PatientRecord patient;
  database::SettingsRecord settings = preferred_settings(context);
  if (known) {
    database::db_GetPatient(context.environment(), *known, 0, patient);
    database::db_GetSettings(context.environment(), *known, settings);
  }
  show_patient(context, patient);
  show_therapy_kind(context, pages.steps);
  pages.targets.show(settings, GlucoseUnit{static_cast<std::int16_t>(chosen_option(context.form, "optBGUnit"))});
}

void offer_insulins(Context& context, Pages& pages, const database::Target& source) {
  std::vector<database::PreferredInsulin> insulins;
  database::db_GetPreferredInsulin(context.environment(), source, insulins);
  pages.insulin.offer(insulins);
}

void preset_insulins(Context& context, Pages& pages, engine::Database& known) {
  const database::Environment environment = context.environment();
  offer_insulins(context, pages, known);
  database::DefaultInsulin usual;
  database::TherapyPlan newest;
  std::array<std::string, 3> drugs;
  database::db_GetDefaultInsulin(environment, known, usual);
  database::db_GetTherapyPlan(environment, known, std::nullopt, newest);
  database::db_GetDefaultOAD(environment, known, drugs);
  pages.insulin.show(usual, newest);
  show_drugs(context, drugs);
}

/// Everything that is kept in a database, read in one opening.
void preset_from_databases(Context& context, Pages& pages) {
  support::Procedure procedure{"wizard!PresetDatabase"};
  std::unique_ptr<engine::Engine> engine;
  std::unique_ptr<engine::Database> known;
  const std::string& path = context.config.CurrentDB;
  const database::FileFailures failures;
  procedure.step([&] { database::OpenPatientDatabase(context.environment(), path, true, false, engine, known); });
  procedure.step([&] { preset_patient(context, pages, known.get()); });
  procedure.step([&] {
    if (known)
      preset_insulins(context, pages, *known);
    else if (path.empty() && support::file_test(*context.ports.files, context.config.LookupDB))
      offer_insulins(context, pages, context.config.LookupDB);
  });
  pages.database_read = known != nullptr && !failures.any();
}

void build_steps(Context& context, Pages& pages) {
  InstallationConfig& config = context.config;
  for (form::Control* page : context.form.array("contstep")) page->set_visible(false);
  config.DBPassword = database::default_password;
  pages.HasCurrentDB = config.ProEdition || !config.CurrentDB.empty();
  pages.steps.choose(config.ProEdition, context.ini_value(config.Path + "pelmar.ini", "setup", "display"));
  context.form.at("pbar").set_maximum(std::max(pages.steps.last(), 1));
}

}  // namespace

void build_and_preset(Context& context, Pages& pages) {
  support::Procedure procedure{"wizard!Presets"};
  form::Form& form = context.form;
  procedure.step([&] { build_steps(context, pages); });
  procedure.step([&] { pages.charts.prepare(chart_limit); });
  procedure.step([&] {
    if (context.config.ProEdition) form.at("imgOpen").set_picture(form.at("imgNew").picture());
  });
  procedure.step([&] { preset_options(context); });
  procedure.step([&] { preset_from_databases(context, pages); });
  procedure.step([&] { pages.scheme.fill(); });
  procedure.step([&] { show_folder(context); });
  procedure.step([&] { form.at("imgSidebar").set_visible(chosen_option(form, "optShowSideBar") == 1); });
  procedure.step([&] { show_style_preview(form); });
}

}  // namespace wizard
