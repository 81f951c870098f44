#include "tests/faults/database_state.h"

#include <filesystem>
#include <functional>
#include <map>
#include <vector>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/engine_error.h"

namespace faults {
namespace {

using namespace engine::embedded;

/// The beginning of each table's part.
constexpr std::string_view table_mark = "\n== ";

void unlock(Connection& file, std::string_view password, bool with_journal) {
  const DatabaseFile kind = identify_database_file(file.beginning(telling_size), file.file_size(), with_journal);
  if (kind.encrypted) {
    const FileKey key{password, kind.salt};
    file.use_key(key);
    key.remember(password);
  }
  if (!file.first_read()) engine::raise(support::error_number::unknown_format);
}

std::vector<std::string> table_names(Connection& file) {
  std::vector<std::string> names;
  const PooledStatement tables = file.statement("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name");
  while (tables->step()) names.emplace_back(tables->text(0));
  return names;
}

/// Replaces the identities of tables and fields, whose values cannot be foreseen, by the names.
class Identities {
 public:
  explicit Identities(Connection& file) {
    for (const std::string table : {"jet.tables", "jet.fields"}) {
      const PooledStatement ids = file.statement("SELECT id, name FROM " + quoted_name(table));
      while (ids->step()) names_.emplace(ids->text(0), "#" + std::string(ids->text(1)));
    }
  }

  std::string shown(std::string_view table, std::string_view column, std::string text) const {
    if (!table.starts_with("jet.") || (column != "id" && column != "table_id")) return text;
    const auto name = names_.find(text);
    return name == names_.end() ? text : name->second;
  }

  /// The text of an index, whose name begins with its table's identity.
  std::string in_layout(std::string text) const {
    constexpr std::string_view before = "INDEX \"";
    const std::size_t begin = text.find(before) + before.size();
    if (begin < before.size()) return text;
    const std::size_t size = text.find('.', begin) - begin;
    const auto name = names_.find(text.substr(begin, size));
    return name == names_.end() ? text : text.replace(begin, size, name->second);
  }

 private:
  std::map<std::string, std::string, std::less<>> names_;
};

void append_layout(std::string& state, Connection& file, const std::string& table, const Identities& identities) {
  const PooledStatement layout = file.statement("SELECT sql FROM sqlite_schema WHERE tbl_name=? ORDER BY name");
  for (layout->with(std::string_view(table)); layout->step();) {
    state.append(identities.in_layout(std::string(layout->text(0)))).append("|\n");
  }
}

void append_rows(std::string& state, Connection& file, const std::string& table, const Identities& identities) {
  const PooledStatement rows = file.statement("SELECT * FROM " + quoted_name(table));
  while (rows->step()) {
    for (int column = 0; column < sqlite3_column_count(rows->handle()); ++column) {
      const bool null = rows->storage_class(column) == SQLITE_NULL;
      const std::string_view name = sqlite3_column_name(rows->handle(), column);
      state.append(null ? "Null" : identities.shown(table, name, std::string(rows->text(column)))).append("|");
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
  const Identities identities{file};
  std::string state;
  for (const std::string& name : table_names(file)) {
    state.append(table_mark).append(name).append("\n");
    append_layout(state, file, name, identities);
    append_rows(state, file, name, identities);
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
