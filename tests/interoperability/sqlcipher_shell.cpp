// sqlcipher_shell FILE [--collation own|stand-in] STATEMENT …: runs SQL on a database through SQLCipher, with the
// password in the environment variable KEY, and writes a line for each row. With "own" it knows our sorting order of
// texts; with "stand-in" it has another order under that name, as some tools offer; without the option it knows none of
// that name. At the first error, it prints the error and ends with 1.
#include <sqlite3.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "database/engine/embedded/jet_sql/collation.h"
#include "tests/interoperability/row_text.h"

namespace {

namespace jet_sql = engine::embedded::jet_sql;

std::string_view text_of(int bytes, const void* text) {
  return {static_cast<const char*>(text), static_cast<std::size_t>(bytes)};
}

int own_order(void*, int left_bytes, const void* left, int right_bytes, const void* right) {
  return jet_sql::compare_texts(text_of(left_bytes, left), text_of(right_bytes, right));
}

int order_of_bytes(void*, int left_bytes, const void* left, int right_bytes, const void* right) {
  return text_of(left_bytes, left).compare(text_of(right_bytes, right));
}

std::string column_text(sqlite3_stmt* row, int column) {
  switch (sqlite3_column_type(row, column)) {
    case SQLITE_NULL:
      return "null";
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return interoperability::number_text(sqlite3_column_double(row, column));
    default: {
      const void* text = sqlite3_column_text(row, column);
      return interoperability::quoted_text(text_of(sqlite3_column_bytes(row, column), text));
    }
  }
}

/// Runs every statement of the text. False if one failed.
bool run(sqlite3* database, const char* sql) {
  while (*sql != '\0') {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql, -1, &statement, &sql) != SQLITE_OK) return false;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int column = 0; column < sqlite3_column_count(statement); ++column) {
        std::cout << (column == 0 ? "" : "|") << column_text(statement, column);
      }
      std::cout << '\n';
    }
    if (sqlite3_finalize(statement) != SQLITE_OK) return false;
  }
  return true;
}

bool give_key(sqlite3* database, const char* key) {
  char* sql = sqlite3_mprintf("PRAGMA key = %Q", key);
  const bool done = sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_free(sql);
  return done;
}

}  // namespace

int main(int count, char** arguments) {
  sqlite3* database = nullptr;
  int next = 2;
  bool done = count > next && sqlite3_open(arguments[1], &database) == SQLITE_OK;
  if (const char* key = std::getenv("KEY")) done = done && give_key(database, key);
  if (done && arguments[next] == std::string("--collation")) {
    const bool own = arguments[next + 1] == std::string("own");
    sqlite3_create_collation(database, jet_sql::collation_name, SQLITE_UTF8, nullptr, own ? own_order : order_of_bytes);
    next += 2;
  }
  for (; done && next < count; ++next) done = run(database, arguments[next]);
  if (!done) std::cerr << sqlite3_errmsg(database) << '\n';
  sqlite3_close(database);
  return done ? 0 : 1;
}
