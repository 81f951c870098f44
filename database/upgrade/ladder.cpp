#include "database/upgrade/ladder.h"

#include <algorithm>
#include <optional>

#include "database/file_failure.h"
#include "database/open_database.h"
#include "database/upgrade/steps.h"

namespace database {
namespace {

using upgrade::Action;
using upgrade::Run;
using upgrade::Step;

/// Steps 58 and 59 were issued twice, so a database that has them runs them again.
constexpr std::int16_t reissued_version = 59, version_before_reissue = 57;

/// The first step applies only to the very first layout.
bool applies(const Step& step, std::int16_t version) {
  return &step == &upgrade::steps().front() ? version == 0 : version < step.version;
}

/// In addition to failures of the file: out of memory, a missing file, a cancelled statement, a closed database.
constexpr support::error_number::Number other_fatal_errors[] = {
    support::error_number::out_of_memory, support::error_number::file_not_found, support::error_number::cancelled,
    support::error_number::object_invalid};

/// True for an error that is not about the layout. A later statement might rely on what the failed one did not do.
bool is_fatal(const support::RuntimeError& error) {
  return is_file_failure(error) ||
         std::ranges::find(other_fatal_errors, error.number()) != std::end(other_fatal_errors);
}

void run_action(Run& run, const Step& step, const Action& action, std::string_view table) {
  end_if_interrupted(run.environment.progress);
  if (run.environment.progress) run.environment.progress->upgrade_step(step.version, table);
  action.act(run, action, table);
}

void run_step(Run& run, const Step& step) {
  run.passed_over = false;
  for (const Action& action : step.actions) {
    support::outcome_of([&] {
      if (action.tables.empty()) run_action(run, step, action, action.table);
      for (const std::string_view table : action.tables) run_action(run, step, action, table);
    }).raise_first(is_fatal);
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
  Run run{environment, database, procedure};
  if (record.MinVersion == reissued_version) record.MinVersion = version_before_reissue;
  for (const Step& step : upgrade::steps()) {
    if (!applies(step, record.MinVersion)) continue;
    run_step(run, step);
    if (!run.passed_over) record.MinVersion = step.version;
  }
}

std::int16_t db_WriteDBInfo(const Environment& environment, const Target& target, VersionRecord& record) {
  support::Procedure procedure{"sql!db_WriteDBInfo"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  if (!opened.get()) return 0;
  if (!needs_upgrade(record)) return write_version_record(procedure, *opened.get(), record) ? 1 : 0;
  VersionRecord upgraded = record;
  const bool written = procedure.guarded([&] {
    engine::Transaction transaction{*opened.get()};
    upgrade_ladder(environment, *opened.get(), upgraded);
    if (!write_version_record(procedure, *opened.get(), upgraded)) throw support::RuntimeError(procedure.error());
    transaction.commit();
  });
  if (written) record = upgraded;
  return written ? 1 : 0;
}

}  // namespace database
