#include "wizard/shared_index.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "database/creation/create_database.h"
#include "database/index/index_database.h"
#include "database/index/index_upgrade.h"
#include "support/file_system.h"
#include "support/windows_path.h"

namespace wizard {

namespace {

constexpr long cancel_caption = 901, how_far = 4886, goes_on = 4887, not_upgraded = 4888;

/// Creates the index. Returns why that failed; nothing if it was created.
std::optional<support::RuntimeError> create(Context& context, const std::string& path) {
  constexpr int folder = static_cast<int>(support::PathPart::Folder);
  const support::RuntimeError otherwise(support::error_number::path_file_access, "The folder cannot be created");
  bool created = false;
  const support::Outcome outcome = support::outcome_of([&] {
    context.ports.files->create_folder(support::ExtractFromPath(path, folder));
    created = database::CreateIndexDatabase(context.environment(), path) == 1;
  });
  if (created) return std::nullopt;
  return outcome.last().value_or(otherwise);
}

/// Creates the index if it is missing. False if it is missing afterwards.
bool create_where_missing(Context& context) {
  const std::string path = context.config.IndexDB;
  if (support::file_test(*context.ports.files, path)) return true;
  auto failure = create(context, path);
  const bool created = !failure;
  std::erase_if(context.created_indexes, [&](const CreatedIndex& before) { return before.path == path; });
  context.created_indexes.push_back({path, std::move(failure)});
  return created;
}

/// The progress of the walk over the patients, as the user sees it. The caption of a single patient's upgrade is shown
/// behind it.
class WalkProgress : public database::Progress {
 public:
  /// `shown` is null if no progress is shown.
  WalkProgress(database::Progress* shown, std::string cancel) : shown_(shown), cancel_(std::move(cancel)) {}

  void at(const std::string& caption) {
    caption_ = caption;
    if (!shown_) return;
    if (!started_) {
      shown_->start(caption, whole);
      shown_->offer_cancel(cancel_);
    }
    started_ = true;
    shown_->set_caption(caption);
  }
  void at(std::int32_t percentage) {
    if (shown_) shown_->set_value(percentage);
  }
  void end() {
    if (started_) shown_->finish();
    started_ = false;
  }

  void start(std::string_view caption, std::int32_t) override { set_caption(caption); }
  void set_caption(std::string_view caption) override {
    if (started_) shown_->set_caption(caption_ + " " + std::string(caption));
  }
  void set_value(std::int32_t) override { at_work(); }
  void at_work() override {
    if (started_) shown_->at_work();
  }
  void finish() override {
    if (started_) shown_->set_caption(caption_);
  }
  bool cancelled() const override { return shown_ && shown_->cancelled(); }

 private:
  static constexpr std::int32_t whole = 100;
  database::Progress* shown_;
  std::string cancel_, caption_;
  bool started_ = false;
};

std::string failure_line(const Context& context, const std::string& file, const support::RuntimeError& failure) {
  return context.config.text(not_upgraded, {file, std::to_string(failure.number())});
}

/// Tells the user how far the walk came and what failed.
void tell(Context& context, const database::IndexUpgrade& upgrade, const std::vector<std::string>& failures) {
  constexpr std::size_t most_lines = 10;
  std::string text = context.config.text(how_far, {std::to_string(upgrade.refreshed), std::to_string(upgrade.due)});
  if (upgrade.cancelled) text += "\r\n" + context.config.text(goes_on);
  for (std::size_t i = 0; i < std::min(failures.size(), most_lines); ++i) text += "\r\n" + failures[i];
  if (failures.size() > most_lines) text += "\r\n…";
  context.ports.user->message_box(text, message_style::information_foreground, context.form.caption());
}

}  // namespace

std::string index_in(std::string_view folder) { return support::join_path(folder, "index.mdb"); }

void provide_index_database(Context& context) {
  if (!support::file_test(*context.ports.files, context.config.IndexDB)) bring_index_up_to_date(context);
}

void bring_index_up_to_date(Context& context) {
  if (!create_where_missing(context)) return;
  database::Environment environment = context.environment();
  WalkProgress progress(environment.progress, context.config.text(cancel_caption));
  if (environment.progress) environment.progress = &progress;
  std::vector<std::string> failures;
  std::optional<support::RuntimeError> first_failure;
  database::IndexUpgradeWatch watch;
  watch.status = [&](const std::string& caption) { progress.at(caption); };
  watch.percentage = [&](std::int32_t percentage) { progress.at(percentage); };
  watch.cancelled = [&] { return progress.cancelled(); };
  watch.patient = [&](std::int32_t, const std::string& file, const database::IndexOutcome& outcome) {
    if (!outcome.failure) return;
    if (!first_failure) first_failure = outcome.failure;
    failures.push_back(failure_line(context, file, *outcome.failure));
  };
  const database::IndexUpgrade upgrade = database::db_UpgradeIndexDatabase(environment, context.config.IndexDB, watch);
  progress.end();
  context.patients_failure = first_failure;
  if (upgrade.cancelled)
    context.patients_failure.emplace(support::error_number::cancelled, "The user has ended the work.");
  if (upgrade.cancelled || upgrade.failed > 0) tell(context, upgrade, failures);
}

}  // namespace wizard
