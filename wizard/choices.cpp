#include "wizard/choices.h"

#include <algorithm>
#include <utility>

#include "database/file_failure.h"
#include "database/zone_table.h"
#include "support/encoding.h"
#include "support/error.h"
#include "wizard/new_database_path.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"

namespace wizard {

namespace {

void read_settings(const database::Environment& environment, const Context& context, const Pages& pages,
                   StoredNow& stored, bool known) {
  // Time zones that the row lacks, in a database of an old layout, get their defaults.
  database::GetTimeZones(environment, "", stored.settings.zones, true);
  stored.settings_read = known && database::db_GetSettings(environment, context.config.CurrentDB, stored.settings);
  if (!stored.settings_read) pages.targets.gather_presets(stored.settings);
}

/// A missing plan is no failure; a plan that cannot be read from the disk is one.
void read_plan(const database::Environment& environment, const Context& context, StoredNow& stored) {
  const support::Outcome outcome = support::outcome_of([&] {
    database::TherapyPlan newest;
    if (database::db_GetTherapyPlan(environment, context.config.CurrentDB, std::nullopt, newest))
      stored.newest = std::move(newest);
  });
  const auto failure = outcome.first(database::is_file_failure);
  stored.plan_unread = failure.has_value();
  if (failure) stored.failure = failure;
}

StoredNow read_stored_now(const Context& context, const Pages& pages) {
  StoredNow stored;
  support::Procedure procedure{"wizard!ReadStored"};
  const database::Environment environment = context.environment();
  const bool known = !context.config.ProEdition && pages.database_read;
  const support::Outcome outcome = support::outcome_of([&] {
    procedure.step([&] {
      if (known) database::db_GetPatient(environment, context.config.CurrentDB, 0, stored.patient);
    });
    procedure.step([&] { read_settings(environment, context, pages, stored, known); });
  });
  const auto failure = outcome.first(database::is_file_failure);
  // Otherwise the parts that could not be read would be written back empty.
  stored.usable = pages.database_read && !failure;
  stored.failure = failure ? failure : pages.database_failure;
  if (known && stored.usable) procedure.step([&] { read_plan(environment, context, stored); });
  return stored;
}

/// Values that no page showed are no choices: the following plan keeps them. A slot that the therapy does not offer is
/// cleared only if the therapy was changed; a target changes only if its page shows another value.
database::PlanChoices plan_choices(const Choices& choices) {
  database::PlanChoices plan = choices.therapy;
  if (choices.patient.therapy != choices.stored.patient.therapy)
    for (auto& insulin : plan.insulins) insulin = insulin.value_or("");
  for (std::size_t n = 0; n < target_members.size(); ++n) {
    const auto member = target_members[n];
    if (!choices.stored.newest || !choices.stored.settings_read ||
        choices.settings.*member != choices.stored.settings.*member)
      plan.targets[n] = choices.settings.*member;
  }
  return plan;
}

void make_plan(const Context& context, Choices& choices) {
  const engine::Date today = context.environment().present();
  const auto& newest = choices.stored.newest;
  choices.plan = newest ? database::following_plan(*newest, plan_choices(choices), today)
                        : database::first_plan(plan_choices(choices), today);
  choices.plan_changed = !newest || !database::same_content(choices.plan, *newest);
  if (choices.patient.therapy > 0) choices.plan.Type = choices.patient.therapy;
  if (!choices.plan_changed) choices.plan = *newest;
}

Choices gather(const Context& context, const Pages& pages, StoredNow stored) {
  Choices choices;
  choices.patient = stored.patient;
  choices.settings = stored.settings;
  choices.stored = std::move(stored);
  choices.folder = context.config.PatientData;
  choices.database = context.config.CurrentDB;
  choices.new_database = !pages.HasCurrentDB && choices.database.empty();
  support::Procedure procedure{"wizard!Gather"};
  for (const OptionGroup* group : option_groups())
    choices.options.push_back({group, written_option(context.form, *group)});
  for (const Page* page : all_pages())
    if (page->gather) procedure.step([&] { page->gather(context, pages, choices); });
  procedure.step([&] { make_plan(context, choices); });
  return choices;
}

void name_new_database(const Context& context, Choices& choices) {
  choices.database = new_database_path(context, choices.patient);
  // If the registry cannot hold its name, nothing would ever find the database again.
  if (!support::fits_cp1252(choices.database)) choices.refused_database = std::exchange(choices.database, "");
}

}  // namespace

int Choices::option(std::string_view controls) const {
  const auto found =
      std::ranges::find_if(options, [&](const OptionChoice& choice) { return choice.group->controls == controls; });
  if (found == options.end())
    throw support::RuntimeError(support::error_number::no_such_element, "No such options: " + std::string(controls));
  return found->option;
}

Choices gather_choices(const Context& context, const Pages& pages) {
  Choices choices = gather(context, pages, read_stored_now(context, pages));
  support::Procedure procedure{"wizard!NameDatabase"};
  if (choices.new_database) procedure.step([&] { name_new_database(context, choices); });
  return choices;
}

Choices gather_pages(const Context& context, const Pages& pages) { return gather(context, pages, pages.stored); }

}  // namespace wizard
