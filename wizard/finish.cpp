#include "wizard/finish.h"

#include <array>
#include <memory>
#include <string>

#include "database/creation/create_database.h"
#include "database/file_failure.h"
#include "database/open_database.h"
#include "database/preferences.h"
#include "support/error.h"
#include "support/windows_path.h"
#include "wizard/finish_report.h"
#include "wizard/home_page.h"

namespace wizard {

namespace {

/// The user's toolbars and menus.
constexpr std::array<std::string_view, 2> discarded_patterns{"*.tb", "*.mnu"};

/// One run of the finish, with the record of the choices and the writer.
class Finish {
 public:
  Finish(Context& context, const Choices& choices, FinishWriter::Mode mode)
      : context_(context), choices_(choices), writer_(context, mode), database_usable_(choices.stored.usable) {}

  FinishReport run();

 private:
  bool professional() const noexcept { return context_.config.ProEdition; }
  void write_index();
  void write_options(bool before_profile);
  void save_profile();
  void create_database();
  void merge_preferences();
  void save_patient();
  void save_therapy_plan();
  void apply_scheme();
  FinishWriter::Discard way_to_discard(const std::string& folder) const;

  Context& context_;
  const Choices& choices_;
  FinishWriter writer_;
  bool database_usable_;
};

FinishReport Finish::run() {
  support::Procedure procedure{"wizard!Finish"};
  write_index();
  write_options(true);
  save_profile();
  procedure.step([&] { writer_.registry_value(context_.config.user_key(), "FirstRun", "0"); });
  procedure.step([&] { apply_scheme(); });
  return writer_.take();
}

/// Reports the patient indexes that this run has created or upgraded already.
void Finish::write_index() {
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
}

void Finish::write_options(bool before_profile) {
  support::Procedure procedure{"wizard!WriteOptions"};
  for (const OptionChoice& choice : choices_.options) {
    const OptionGroup& group = *choice.group;
    if ((group.order <= last_before_profile) != before_profile) continue;
    procedure.step([&] {
      writer_.registry_value(context_.config.user_key() + std::string(group.written_below), group.value_name,
                             choice.word());
    });
  }
}

void Finish::save_profile() {
  support::Procedure procedure{"wizard!SaveProfile"};
  const InstallationConfig& config = context_.config;
  procedure.step([&] {
    if (!professional()) writer_.registry_value(config.RegKey, "PATIENTDATA", choices_.folder);
  });
  write_options(false);
  procedure.step([&] {
    if (choices_.new_database) create_database();
  });
  procedure.step([&] {
    if (!professional()) save_patient();
  });
  procedure.step([&] { update_home_page(context_, choices_.charts, writer_); });
  procedure.step([&] { writer_.registry_value(config.RegKey, "DataBaseName", choices_.database); });
}

void Finish::create_database() {
  const std::string& path = choices_.database;
  if (!choices_.refused_database.empty()) {
    writer_.problem(FinishReport::What::File, choices_.refused_database, "patient database",
                    "the registry cannot hold the path of this folder", reason_text::text_does_not_fit);
    return;
  }
  if (path.empty()) {
    writer_.problem(FinishReport::What::File, choices_.folder, "patient database",
                    "no name is free for the new database", reason_text::no_free_name);
    return;
  }
  database_usable_ = writer_.file(path, "patient database", [&] {
    context_.ports.files->create_folder(choices_.folder);
    return database::CreatePatientDatabase(context_.environment(), path, choices_.patient, choices_.settings) == 1;
  });
  if (!writer_.previewing()) context_.config.CurrentDB = path;
  if (database_usable_) merge_preferences();
}

/// The lookup database is merged only if it can be read: a table that it lacks would be missing in the new database.
void Finish::merge_preferences() {
  const std::string& lookup = context_.config.LookupDB;
  if (!support::file_test(*context_.ports.files, lookup)) return;
  writer_.file(choices_.database, "laboratory definitions and preferred insulins", [&] {
    const database::Environment environment = context_.environment();
    try {
      database::open_patient_database(environment, lookup, true);
    } catch (const support::RuntimeError& failure) {
      if (failure.number() != support::error_number::unknown_format || !environment.readable_copy) throw;
    }
    return database::db_MergePreferences(environment, choices_.database, lookup);
  });
}

void Finish::save_patient() {
  const std::string& path = choices_.database;
  if (path.empty()) return;
  if (!database_usable_) {
    // The known database could not be read at the start or cannot be read now, so the pages' values must not replace
    // its values.
    if (!choices_.new_database)
      writer_.problem(FinishReport::What::File, path, "patient", "the database could not be read",
                      reason_text::not_read);
    return;
  }
  const database::Environment environment = context_.environment();
  writer_.file(path, "patient", [&] { return database::db_AddPatient(environment, path, choices_.patient) == 1; });
  writer_.file(path, "settings", [&] { return database::db_SaveSettings(environment, path, choices_.settings) == 1; });
  save_therapy_plan();
}

void Finish::save_therapy_plan() {
  const std::string& path = choices_.database;
  if (choices_.stored.plan_unread) {
    writer_.problem(FinishReport::What::File, path, "therapy plan", "the newest plan could not be read",
                    reason_text::not_read);
    return;
  }
  if (!choices_.plan_changed) return;
  database::TherapyPlan plan = choices_.plan;
  writer_.file(path, "therapy plan", [&] { return database::db_SaveTherapyPlan(context_.environment(), path, plan); });
}

void Finish::apply_scheme() {
  if (!choices_.scheme || !choices_.scheme->changed) return;
  writer_.registry_value(context_.config.RegKey, "Scheme", std::to_string(choices_.scheme->id));
  // The diary builds its toolbars and menus again for the new scheme.
  const std::string folder = support::with_backslash(support::join_path(context_.config.Path, "user"));
  const FinishWriter::Discard how = way_to_discard(folder);
  for (const std::string_view pattern : discarded_patterns) writer_.discard(folder, pattern, how);
}

/// If there is no recycle bin, the user is asked; the question names the files that would be lost.
FinishWriter::Discard Finish::way_to_discard(const std::string& folder) const {
  using Discard = FinishWriter::Discard;
  constexpr long question = 6053;
  std::string names;
  for (const std::string_view pattern : discarded_patterns)
    for (const std::string& name : context_.ports.files->files(folder, pattern)) names += "\r\n" + name;
  if (names.empty() || context_.ports.user->has_recycle_bin(folder)) return Discard::Recycle;
  if (writer_.previewing()) return Discard::Keep;
  const int button = context_.ports.user->message_box(context_.config.text(question, {folder, names}),
                                                      message_style::yes_no_system_modal, context_.form.caption());
  return button == yes_button ? Discard::ForGood : Discard::Keep;
}

}  // namespace

FinishReport apply_configuration(Context& context, const Choices& choices, FinishWriter::Mode mode) {
  return Finish(context, choices, mode).run();
}

}  // namespace wizard
