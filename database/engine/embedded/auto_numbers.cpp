#include "database/engine/embedded/auto_numbers.h"

#include <limits>
#include <utility>

#include "database/engine/embedded/sqlite_text.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

std::int64_t highest(Connection& connection, const TableDefinition& table) {
  const std::string field = quoted_name(table.auto_number()->name);
  return connection.integer("SELECT max(" + field + ") FROM " + quoted_name(table.name));
}

}  // namespace

bool AutoNumbers::are_current(Connection& connection) {
  const std::int64_t version = connection.integer("PRAGMA data_version");
  return std::exchange(data_version_, version) == version;
}

std::int32_t AutoNumbers::next(Connection& connection, const StoredTable& table) {
  if (!are_current(connection)) forget();
  auto number = last_.find(table.id);
  if (number == last_.end()) number = last_.emplace(table.id, highest(connection, table.definition)).first;
  if (number->second >= std::numeric_limits<std::int32_t>::max()) raise(6);
  return static_cast<std::int32_t>(++number->second);
}

std::int32_t AutoNumbers::confirm(Connection& connection, const StoredTable& table, std::int32_t number) {
  if (are_current(connection)) return number;
  forget();
  return highest(connection, table.definition) < number ? number : next(connection, table);
}

}  // namespace engine::embedded
