#include "wizard/finish.h"

#include <algorithm>
#include <string>
#include <utility>

#include "database/create_database.h"
#include "database/file_failure.h"
#include "database/open_database.h"
#include "database/patient.h"
#include "database/plan_choices.h"
#include "database/preferences.h"
#include "database/settings.h"
#include "support/encoding.h"
#include "support/error.h"
#include "wizard/drug_page.h"
#include "wizard/finish_problems.h"
#include "wizard/home_page.h"
#include "wizard/new_database_path.h"
#include "wizard/option_groups.h"
#include "wizard/patient_page.h"
#include "wizard/windows_path.h"

namespace wizard {

namespace {

/// One run of the finish: what the pages hold, gathered once, and the writer.
class Finish {
 public:
  Finish(Context& context, const Pages& pages, FinishWriter::Mode mode)
      : context_(context),
        pages_(pages),
        writer_(context, mode),
        database_(context.config.CurrentDB),
        database_usable_(pages.database_read) {}

  FinishReport run();

 private:
  bool professional() const noexcept { return context_.config.ProEdition; }
  void write_option(const OptionGroup& group);
  void save_profile();
  void gather();
  void create_database();
  void merge_preferences();
  void save_patient();
  void save_therapy_plan();
  std::optional<database::TherapyPlan> plan_to_save() const;
  database::PlanChoices plan_choices(bool following) const;
  void apply_scheme();

  Context& context_;
  const Pages& pages_;
  FinishWriter writer_;
  std::string database_;  ///< the current database, once known
  bool database_usable_;
  database::PatientRecord patient_;
  std::int16_t stored_therapy_ = 0;
  database::SettingsRecord stored_settings_;  ///< as the database holds them
  database::SettingsRecord settings_;         ///< with the pages' targets
};

FinishReport Finish::run() {
  support::Procedure procedure{"wizard!Finish"};
  for (const CreatedIndex& index : context_.created_indexes) {
    writer_.file(index.path, "patient index", [&] {
      if (index.failure) throw support::RuntimeError(*index.failure);
      return true;
    });
  }
  if (context_.patients_failure) {
    writer_.file(context_.config.IndexDB, "patient databases",
                 [&]() -> bool { throw support::RuntimeError(*context_.patients_failure); });
  }
  for (const OptionGroup* group : option_groups())
    if (group->order <= last_before_profile) procedure.step([&] { write_option(*group); });
  save_profile();
  procedure.step([&] { writer_.registry_value(context_.config.user_key(), "FirstRun", "0"); });
  procedure.step([&] { apply_scheme(); });
  return writer_.take();
}

void Finish::write_option(const OptionGroup& group) {
  writer_.registry_value(context_.config.user_key() + std::string(group.written_below), group.value_name,
                         chosen_word(context_.form, group));
}

void Finish::save_profile() {
  support::Procedure procedure{"wizard!SaveProfile"};
  const InstallationConfig& config = context_.config;
  procedure.step([&] { gather(); });
  procedure.step([&] {
    if (!professional()) writer_.registry_value(config.RegKey, "PATIENTDATA", config.PatientData);
  });
  for (const OptionGroup* group : option_groups())
    if (group->order > last_before_profile) procedure.step([&] { write_option(*group); });
  procedure.step([&] {
    if (!pages_.HasCurrentDB && database_.empty()) create_database();
  });
  procedure.step([&] {
    if (!professional()) save_patient();
  });
  procedure.step([&] { update_home_page(context_, pages_.charts, writer_); });
  procedure.step([&] { writer_.registry_value(config.RegKey, "DataBaseName", database_); });
}

/// The pages show a part of both records only. The rest is read again now, so that nothing is written back that another
/// program has changed since the start.
void Finish::gather() {
  const database::Environment environment = context_.environment();
  const bool known = !professional() && database_usable_;
  const database::FileFailures failures;
  if (known) database::db_GetPatient(environment, database_, 0, patient_);
  stored_therapy_ = patient_.therapy;
  gather_patient(context_.form, patient_);
  // Zones that the row does not have, in a database of an old layout, get their defaults.
  database::GetTimeZones(environment, "", stored_settings_.zones, true);
  const bool read = known && database::db_GetSettings(environment, database_, stored_settings_);
  // What could not be read would be written back empty.
  if (known && failures.any()) database_usable_ = false;
  settings_ = stored_settings_;
  if (!read) pages_.targets.gather_presets(settings_);
  pages_.targets.gather(settings_);
}

void Finish::create_database() {
  database_ = new_database_path(context_, patient_);
  if (database_.empty()) {
    writer_.problem(FinishReport::What::File, context_.config.PatientData, "patient database",
                    "no name is free for the new database", reason_text::no_free_name);
    return;
  }
  if (!support::fits_cp1252(database_)) {
    // The registry could not name it: nothing would ever find the database again.
    writer_.problem(FinishReport::What::File, std::exchange(database_, ""), "patient database",
                    "the registry cannot hold the path of this folder", reason_text::text_does_not_fit);
    return;
  }
  database_usable_ = writer_.file(database_, "patient database", [&] {
    context_.ports.files->create_folder(context_.config.PatientData);
    return database::CreatePatientDatabase(context_.environment(), database_, patient_, settings_) == 1;
  });
  if (!writer_.previewing()) context_.config.CurrentDB = database_;
  if (database_usable_) merge_preferences();
}

/// The lookup database is merged only where it can be read: a table that it lacks would be gone from the new one.
void Finish::merge_preferences() {
  const std::string& lookup = context_.config.LookupDB;
  if (!support::file_test(*context_.ports.files, lookup)) return;
  writer_.file(database_, "laboratory definitions and preferred insulins", [&] {
    const database::Environment environment = context_.environment();
    {
      std::unique_ptr<engine::Engine> engine;
      std::unique_ptr<engine::Database> readable;
      support::RuntimeError failure{0, ""};
      database::OpenPatientDatabase(environment, lookup, true, false, engine, readable, &failure);
      if (!readable && (failure.number() != database::error_unknown_format || !environment.readable_copy)) return false;
    }
    return database::db_MergePreferences(environment, database_, lookup);
  });
}

void Finish::save_patient() {
  if (database_.empty()) return;
  if (!database_usable_) {
    // Its fields were not shown, or are not known now: what the pages hold must not replace them.
    if (pages_.HasCurrentDB)
      writer_.problem(FinishReport::What::File, database_, "patient", "the database could not be read",
                      reason_text::not_read);
    return;
  }
  const database::Environment environment = context_.environment();
  writer_.file(database_, "patient", [&] { return database::db_AddPatient(environment, database_, patient_) == 1; });
  writer_.file(database_, "settings",
               [&] { return database::db_SaveSettings(environment, database_, settings_) == 1; });
  save_therapy_plan();
}

void Finish::save_therapy_plan() {
  const database::FileFailures failures;
  auto plan = plan_to_save();
  if (failures.any()) {
    writer_.problem(FinishReport::What::File, database_, "therapy plan", "the newest plan could not be read",
                    reason_text::not_read);
    return;
  }
  if (!plan) return;
  writer_.file(database_, "therapy plan",
               [&] { return database::db_SaveTherapyPlan(context_.environment(), database_, *plan); });
}

/// Nothing where the newest plan says already what the pages show.
std::optional<database::TherapyPlan> Finish::plan_to_save() const {
  const database::Environment environment = context_.environment();
  const engine::Date today = environment.present();
  database::TherapyPlan newest, plan;
  if (pages_.HasCurrentDB && database::db_GetTherapyPlan(environment, database_, std::nullopt, newest)) {
    plan = database::following_plan(newest, plan_choices(true), today);
    if (database::same_content(plan, newest)) return std::nullopt;
  } else {
    plan = database::first_plan(plan_choices(false), today);
  }
  if (patient_.therapy > 0) plan.Type = patient_.therapy;
  return plan;
}

/// What no page showed is no choice: a plan that is followed keeps it. An insulin slot that the therapy does not offer
/// is given up only where the therapy was changed, a target only where its page shows another value.
database::PlanChoices Finish::plan_choices(bool following) const {
  database::PlanChoices choices;
  if (pages_.steps.offers("Insulin")) choices.insulins = pages_.insulin.insulins();
  if (patient_.therapy != stored_therapy_)
    for (auto& insulin : choices.insulins) insulin = insulin.value_or("");
  if (pages_.steps.offers("Medikamente")) std::ranges::copy(gather_drugs(context_.form), choices.drugs.begin());
  for (std::size_t n = 0; n < target_members.size(); ++n) {
    const auto member = target_members[n];
    if (!following || settings_.*member != stored_settings_.*member) choices.targets[n] = settings_.*member;
  }
  return choices;
}

void Finish::apply_scheme() {
  const auto scheme = pages_.scheme.changed_scheme();
  if (!scheme) return;
  writer_.registry_value(context_.config.RegKey, "Scheme", std::to_string(*scheme));
  // The diary builds its toolbars and menus anew for the scheme.
  const std::string folder = with_backslash(join_path(context_.config.Path, "user"));
  for (std::string_view pattern : {"*.tb", "*.mnu"}) writer_.recycle(folder, pattern);
}

}  // namespace

FinishReport apply_configuration(Context& context, const Pages& pages, FinishWriter::Mode mode) {
  return Finish(context, pages, mode).run();
}

}  // namespace wizard
