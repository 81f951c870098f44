// A SQLite database in memory on which statements of the dialect run without the engine between.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/jet_sql.h"

namespace jet_sql_test {

using namespace engine::embedded;

/// Tables as the statements that ran have left them.
class Tables final : public Catalogue {
 public:
  const TableDefinition* find_table(std::string_view name) const override;
  std::vector<std::unique_ptr<TableDefinition>> tables;
};

/// The result of a statement: rows like "1 | 'text' | Null | 2024-03-07 10:20:00", or the number of changed rows.
struct Answer {
  std::string columns;  ///< "id Long, name Text"
  std::vector<std::string> rows;
};

class SqlDatabase {
 public:
  SqlDatabase();

  /// Raises RuntimeError as the compiler and error_of() do.
  Answer run(std::string_view statement);
  /// The first value of the first row, as in Answer.
  std::string value(std::string_view statement);
  /// Number of the error that the statement raises; 0 if it raises none.
  int error(std::string_view statement);
  /// Runs SQLite's own SQL, for what the dialect cannot express.
  void sqlite(const std::string& text);
  void allow_empty_texts(std::string_view table);
  const Catalogue& catalogue() const { return tables_; }
  sqlite3* connection() const { return connection_.get(); }

  void create(const TableDefinition& table);

 private:
  struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using PreparedStatement = std::unique_ptr<sqlite3_stmt, Finalize>;
  friend struct Runner;

  jet_sql::Numbering last_given(const std::string& table);
  PreparedStatement prepare(const std::string& text);
  void create(const std::string& table, const IndexDefinition& index);

  std::unique_ptr<sqlite3, Close> connection_;
  jet_sql::Numbering* numbering_ = nullptr;
  Tables tables_;
};

}  // namespace jet_sql_test
