#include "tests/faults/database_state.h"

#include <filesystem>
#include <vector>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/sqlite_text.h"
#include "database/engine/engine_error.h"

namespace faults {
namespace {

using namespace engine::embedded;

/// Begins the part of each table.
constexpr std::string_view table_mark = "\n== ";

void unlock(Connection& file, std::string_view password, bool with_journal) {
  const DatabaseFile kind = identify_database_file(file.beginning(telling_size), file.file_size(), with_journal);
  if (kind.encrypted) {
    const FileKey key{password, kind.salt};
    file.use_key(key);
    key.remember(password);
  }
  if (!file.first_read()) engine::raise(3343);
}

std::vector<std::string> table_names(Connection& file) {
  std::vector<std::string> names;
  const PooledStatement tables = file.statement("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name");
  while (tables->step()) names.emplace_back(tables->text(0));
  return names;
}

void append_rows(std::string& state, const PooledStatement& rows) {
  while (rows->step()) {
    for (int column = 0; column < sqlite3_column_count(rows->handle()); ++column) {
      state.append(rows->storage_class(column) == SQLITE_NULL ? "Null" : rows->text(column)).append("|");
    }
    state += '\n';
  }
}

}  // namespace

std::string database_state(const std::string& host_path, std::string_view password) {
  if (!std::filesystem::exists(host_path)) return "(no file)";
  Connection file{host_path, {}};
  unlock(file, password, has_journal(host_path));
  file.check_integrity();
  std::string state;
  for (const std::string& name : table_names(file)) {
    state.append(table_mark).append(name).append("\n");
    const PooledStatement layout = file.statement("SELECT sql FROM sqlite_schema WHERE tbl_name=? ORDER BY name");
    layout->with(std::string_view(name));
    append_rows(state, layout);
    append_rows(state, file.statement("SELECT * FROM " + engine::embedded::quoted_name(name)));
  }
  return state;
}

std::string table_state(std::string_view state, std::string_view table) {
  const std::string head = std::string(table_mark).append(table).append("\n");
  const std::size_t begin = state.find(head);
  if (begin == std::string_view::npos) return {};
  const std::size_t end = state.find(table_mark, begin + head.size());
  return std::string(state.substr(begin, end == std::string_view::npos ? end : end - begin));
}

}  // namespace faults
