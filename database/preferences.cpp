#include "database/preferences.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>

#include "database/engine/engine_error.h"
#include "database/file_failure.h"
#include "database/open_database.h"

namespace database {
namespace {

constexpr std::string_view preference_tables[] = {"labdefs", "preferredinsulin", "preferredmedicals"};

/// The errors that mean that the other database lacks a table: 3011, 3078 or 3376, depending on engine and place.
constexpr support::error_number::Number no_such_table[] = {
    support::error_number::no_such_item, support::error_number::unknown_table, support::error_number::no_such_table};

std::string copy_of(std::string_view table) { return std::string(table) + "_copy"; }

/// The path as content of a text literal. An apostrophe in it must not end the literal: the copies would fail and the
/// tables be lost.
std::string with_doubled_quotes(std::string_view path) {
  std::string text;
  for (const char character : path) text.append(character == '\'' ? 2 : 1, character);
  return text;
}

class Exchange {
 public:
  Exchange(support::Procedure& procedure, const OpenedTarget& opened, std::string_view other_path)
      : procedure_(procedure), opened_(opened), other_file_(" IN '" + with_doubled_quotes(other_path) + "'") {}

  /// Returns true when all tables were copied. The old tables and the copies change places at once, or not at all.
  bool run() {
    bool all_copied = true;
    const bool committed = procedure_.guarded([&] {
      engine::Transaction transaction{opened_.database()};
      // No table is dropped before all copies exist: some engines commit a large transaction in parts.
      for (const std::string_view table : preference_tables) all_copied &= copy(table);
      for (const std::string_view table : preference_tables) take_place(table);
      transaction.commit();
    });
    return committed && all_copied;
  }

 private:
  /// True when the statement has run, or there was nothing for it to work on. Every other failure ends the exchange.
  bool execute(const std::string& sql) {
    if (procedure_.step([&] { opened_.database().execute(sql); })) return true;
    const support::RuntimeError error = procedure_.error();
    if (std::ranges::find(no_such_table, error.number()) == std::end(no_such_table)) throw support::RuntimeError(error);
    return false;
  }

  /// Copies a table. False where the other database lacks it.
  bool copy(std::string_view table) {
    const std::string target = "[" + copy_of(table) + "]";
    if (has(copy_of(table))) execute("DROP TABLE " + target);
    if (!execute("SELECT * INTO " + target + " FROM [" + std::string(table) + "]" + other_file_)) return false;
    const std::int32_t read = opened_.database().records_affected();
    const auto counted = opened_.database().open_recordset("SELECT COUNT(*) AS stored FROM " + target);
    if (std::get<std::int32_t>(counted->value("stored")) != read)
      engine::raise(support::error_number::disk_error, "a copy is not whole");
    return true;
  }

  void take_place(std::string_view table) {
    execute("DROP TABLE [" + std::string(table) + "]");
    if (has(copy_of(table))) opened_.database().table_defs().item(copy_of(table))->set_name(table);
  }

  bool has(const std::string& table) {
    try {
      opened_.database().table_defs().item(table);
      return true;
    } catch (const support::RuntimeError& error) {
      if (error.number() != support::error_number::item_not_found) throw;
      return false;
    }
  }

  support::Procedure& procedure_;
  const OpenedTarget& opened_;
  std::string other_file_;
};

}  // namespace

bool db_MergePreferences(const Environment& environment, const Target& target, std::string_view other_path) {
  support::Procedure procedure{"sql!db_MergePreferences"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  if (Exchange(procedure, opened, other_path).run()) return true;
  if (procedure.error().number() != support::error_number::unknown_format || !environment.readable_copy) return false;
  std::unique_ptr<ReadableCopy> copy;
  procedure.step([&] { copy = environment.readable_copy(environment, other_path); });
  return copy && Exchange(procedure, opened, copy->path()).run();
}

}  // namespace database
