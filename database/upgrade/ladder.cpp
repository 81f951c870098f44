#include "database/upgrade/ladder.h"

#include <algorithm>
#include <optional>

#include "database/upgrade/step.h"

namespace database {
namespace {

using upgrade::Action;
using upgrade::Run;
using upgrade::Step;

/// Steps 58 and 59 were issued a second time: a database that has them runs them again.
constexpr std::int16_t reissued_version = 59, version_before_reissue = 57;

/// The first step is for the very first layout only.
bool applies(const Step& step, std::int16_t version) {
  return &step == &upgrade::steps().front() ? version == 0 : version < step.version;
}

/// Errors that say nothing of the layout: out of memory, the disk, a file in use, damaged or not to be opened, a
/// cancelled statement, a closed database. After one of them whatever a later statement does may build on what an
/// earlier one did not do.
constexpr int fatal_errors[] = {7, 3024, 3043, 3045, 3051, 3059, 3343, 3420};

/// Notes the first such error among the statements that are passed over.
class FatalErrors {
 public:
  FatalErrors() {
    previous_ = support::set_skipped_statement_listener(
        [this](std::string_view label, const support::RuntimeError& error) { notice(label, error); });
  }
  ~FatalErrors() { support::set_skipped_statement_listener(std::move(previous_)); }
  FatalErrors(const FatalErrors&) = delete;
  FatalErrors& operator=(const FatalErrors&) = delete;

  void raise() const {
    if (first_) throw *first_;
  }

 private:
  void notice(std::string_view label, const support::RuntimeError& error) {
    if (previous_) previous_(label, error);
    if (!first_ && std::ranges::find(fatal_errors, error.number()) != std::end(fatal_errors)) first_ = error;
  }

  support::SkippedStatementListener previous_;
  std::optional<support::RuntimeError> first_;
};

void run_action(Run& run, const Step& step, const Action& action, std::string_view table) {
  if (run.environment.progress) run.environment.progress->upgrade_step(step.version, table);
  action.act(run, action, table);
}

void run_step(Run& run, const Step& step, const FatalErrors& fatal) {
  run.passed_over = false;
  for (const Action& action : step.actions) {
    if (action.tables.empty()) run_action(run, step, action, action.table);
    for (const std::string_view table : action.tables) run_action(run, step, action, table);
    fatal.raise();
  }
  run.procedure.clear();
}

}  // namespace

bool needs_upgrade(const VersionRecord& record) noexcept {
  return record.MajVersion == current_major_version && record.MinVersion < current_minor_version;
}

void upgrade_ladder(const Environment& environment, engine::Database& database, VersionRecord& record) {
  if (!needs_upgrade(record)) return;
  support::Procedure procedure{"sql!db_WriteDBInfo"};
  const FatalErrors fatal;
  Run run{environment, database, procedure};
  if (record.MinVersion == reissued_version) record.MinVersion = version_before_reissue;
  for (const Step& step : upgrade::steps()) {
    if (!applies(step, record.MinVersion)) continue;
    run_step(run, step, fatal);
    if (!run.passed_over) record.MinVersion = step.version;
  }
}

}  // namespace database
