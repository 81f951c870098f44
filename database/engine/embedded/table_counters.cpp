#include "database/engine/embedded/table_counters.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

bool has_counters(Connection& connection) {
  return connection.integer("SELECT count(*) FROM sqlite_schema WHERE type='table' AND name='jet.counters'") == 1;
}

std::int64_t highest_number(Connection& connection, const TableDefinition& table) {
  const FieldDefinition* const field = table.auto_number();
  if (!field) return 0;
  return connection.integer("SELECT max(" + quoted_name(field->name) + ") FROM " + quoted_name(table.name));
}

std::int64_t highest_row(Connection& connection, const TableDefinition& table) {
  const std::string row_id{table.row_id_column()};
  if (row_id.empty()) return 0;
  return connection.integer("SELECT max(" + row_id + ") FROM " + quoted_name(table.name));
}

}  // namespace

void TableCounters::create_table(Connection& connection) {
  connection.run(R"(CREATE TABLE IF NOT EXISTS "jet.counters"(
                      table_id INTEGER PRIMARY KEY, last_row INTEGER NOT NULL, last_number INTEGER NOT NULL))");
}

void TableCounters::read(Connection& connection, const StoredTable& table, Counter& counter) const {
  counter.in_file = false;
  counter.stored_row = highest_row(connection, table.definition);
  counter.stored_number = 0;
  if (has_counters(connection)) {
    const PooledStatement stored =
        connection.statement(R"(SELECT last_row, last_number FROM "jet.counters" WHERE table_id=?)");
    if (stored->with(table.id).step()) {
      counter.in_file = true;
      counter.stored_row = std::max(counter.stored_row, stored->integer(0));
      counter.stored_number = stored->integer(1);
    }
  }
  counter.row = std::max(counter.row, counter.stored_row);
  counter.number = std::max(counter.number, counter.stored_number);
  // The table has no counter in the file yet.
  if (!counter.in_file) counter.number = std::max(counter.number, highest_number(connection, table.definition));
}

TableCounters::Counter& TableCounters::counter(Connection& connection, const StoredTable& table) {
  if (!std::exchange(checked_, true)) {
    const std::int64_t version = connection.integer("PRAGMA data_version");
    if (std::exchange(data_version_, version) != version) {
      for (auto& each : counters_) each.second.known = false;
    }
  }
  Counter& counter = counters_[table.id];
  if (counter.known) return counter;
  read(connection, table, counter);
  counter.known = true;
  return counter;
}

void TableCounters::set_back(Connection& connection) {
  if (has_counters(connection)) connection.run(R"(DELETE FROM "jet.counters")");
}

std::int32_t TableCounters::next_number(Connection& connection, const StoredTable& table) {
  Counter& last = counter(connection, table);
  if (last.number >= std::numeric_limits<std::int32_t>::max()) raise(error_number::overflow);
  return static_cast<std::int32_t>(++last.number);
}

std::int64_t TableCounters::next_row(Connection& connection, const StoredTable& table) {
  Counter& last = counter(connection, table);
  if (last.row >= std::numeric_limits<std::int64_t>::max()) raise(error_number::overflow);
  return ++last.row;
}

void TableCounters::lend(Connection& connection, const StoredTable& table) {
  const Counter& last = counter(connection, table);
  connection.numbering() = {last.number, last.row};
}

void TableCounters::take_back(Connection& connection, const StoredTable& table) {
  Counter& last = counter(connection, table);
  last.number = std::max(last.number, connection.numbering().number);
  last.row = std::max(last.row, connection.numbering().row);
}

void TableCounters::include_values(Connection& connection, const StoredTable& table) {
  Counter& last = counter(connection, table);
  last.number = std::max(last.number, highest_number(connection, table.definition));
}

void TableCounters::erase(Connection& connection, std::int64_t table) {
  counters_[table].erased = true;
  if (!has_counters(connection)) return;
  connection.statement(R"(DELETE FROM "jet.counters" WHERE table_id=?)")->with(table).run();
}

void TableCounters::store(Connection& connection) {
  bool ready = false;
  for (auto& [table, last] : counters_) {
    const bool counted = last.row != last.stored_row || last.number != last.stored_number;
    if (!last.known || last.erased || (last.in_file && !counted)) continue;
    if (!std::exchange(ready, true) && !has_counters(connection)) create_table(connection);
    connection.statement(R"(INSERT OR REPLACE INTO "jet.counters" VALUES(?,?,?))")
        ->with(table, last.row, last.number)
        .run();
    last.in_file = true;
  }
}

void TableCounters::committed() noexcept {
  checked_ = false;
  std::erase_if(counters_, [](const auto& each) { return each.second.erased; });
  for (auto& [table, last] : counters_) {
    last.stored_row = last.row;
    last.stored_number = last.number;
  }
}

void TableCounters::rolled_back(const std::function<void(std::int64_t table, std::int64_t last_row)>& tell) {
  checked_ = false;
  for (auto& [table, last] : counters_) {
    if (last.known && last.row != last.stored_row) tell(table, last.stored_row);
    last.known = last.erased = false;
  }
}

}  // namespace engine::embedded
