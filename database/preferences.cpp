#include "database/preferences.h"

#include <memory>
#include <string>

#include "database/file_failure.h"
#include "database/opened_target.h"

namespace database {
namespace {

constexpr const char* preference_tables[] = {"[labdefs]", "[preferredinsulin]", "[preferredmedicals]"};

/// The path for a text literal: an apostrophe in it must not end the literal, or the copies fail and the tables are
/// lost.
std::string with_doubled_quotes(std::string_view path) {
  std::string text;
  for (const char character : path) text.append(character == '\'' ? 2 : 1, character);
  return text;
}

bool exchange_preferences(support::Procedure& procedure, const OpenedTarget& opened, std::string_view other_path) {
  const std::string other_file = " IN '" + with_doubled_quotes(other_path) + "'";
  bool all_copied = true;
  const auto execute = [&](const std::string& sql) {
    const bool done = procedure.step([&] { opened.database().execute(sql); });
    // A table that the other database lacks is passed over; a disk that fails must not cost the tables dropped already.
    if (!done && is_file_failure(procedure.error())) throw support::RuntimeError(procedure.error());
    return done;
  };
  // The tables that were there and the copies change places at once, or not at all.
  const bool committed = procedure.guarded([&] {
    engine::Transaction transaction{opened.database()};
    for (const std::string table : preference_tables) execute("DROP TABLE " + table);
    for (const std::string table : preference_tables) {
      all_copied &= execute("SELECT * INTO " + table + " FROM " + table + other_file);
    }
    transaction.commit();
  });
  return committed && all_copied;
}

}  // namespace

bool db_MergePreferences(const Environment& environment, const Target& target, std::string_view other_path) {
  support::Procedure procedure{"sql!db_MergePreferences"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  if (exchange_preferences(procedure, opened, other_path)) return true;
  if (procedure.error().number() != error_unknown_format || !environment.readable_copy) return false;
  std::unique_ptr<ReadableCopy> copy;
  procedure.step([&] { copy = environment.readable_copy(environment, other_path); });
  return copy && exchange_preferences(procedure, opened, copy->path());
}

}  // namespace database
