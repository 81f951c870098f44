#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

#include "database/engine/embedded/jet_sql/jet_error.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr std::string_view text_mark = "jet:";

struct ResultRow {
  int result;
  int number;
  std::string_view text;
};

// SQLite's own messages may quote the statement, and with it what is stored; none of them is passed on.
constexpr ResultRow result_codes[] = {
    {SQLITE_BUSY, 3045, "Could not use the database; file already in use."},
    {SQLITE_LOCKED, 3211, "The table is in use and cannot be changed."},
    {SQLITE_NOMEM, 7, "Out of memory."},
    {SQLITE_READONLY, 3027, "Cannot update. Database or object is read-only."},
    {SQLITE_INTERRUPT, 3059, "Operation canceled by user."},
    {SQLITE_IOERR, 3043, "Disk or network error."},
    {SQLITE_FULL, 3043, "Disk or network error: the disk is full."},
    {SQLITE_CORRUPT, 3343, "Unrecognized database format: the file is damaged."},
    {SQLITE_NOTADB, 3343, "Unrecognized database format."},
    {SQLITE_CANTOPEN, 3051, "The database file, or the journal beside it, cannot be opened."},
    {SQLITE_PERM, 3051, "The database file cannot be opened: you need permission."},
    {SQLITE_AUTH, 3051, "The operation is not permitted."},
    {SQLITE_TOOBIG, 14, "Out of string space."},
    {SQLITE_MISMATCH, error_conversion, "Data type conversion error."},
};

/// "jet:3421:Data type conversion error."
bool is_own_error(std::string_view message, int& number, std::string_view& description) {
  if (!message.starts_with(text_mark)) return false;
  message.remove_prefix(text_mark.size());
  const auto parsed = std::from_chars(message.data(), message.data() + message.size(), number);
  const auto used = static_cast<std::size_t>(parsed.ptr - message.data());
  if (parsed.ec != std::errc{} || used >= message.size() || message[used] != ':') return false;
  description = message.substr(used + 1);
  return true;
}

}  // namespace

support::RuntimeError error_of(sqlite3* connection, int result) {
  constexpr int internal_error = 51;
  constexpr int primary_code = 0xFF;
  int number = 0;
  std::string_view description;
  const char* const message = sqlite3_errmsg(connection);
  if ((result & primary_code) == SQLITE_ERROR && is_own_error(message != nullptr ? message : "", number, description)) {
    return {number, std::string(description)};
  }
  if ((result & primary_code) == SQLITE_CONSTRAINT) {
    const bool null = sqlite3_extended_errcode(connection) == SQLITE_CONSTRAINT_NOTNULL;
    const int constraint = null ? error_field_required : error_duplicate_value;
    return {constraint, description_of(constraint)};
  }
  const auto* const row = std::find_if(std::begin(result_codes), std::end(result_codes),
                                       [&](const ResultRow& each) { return each.result == (result & primary_code); });
  if (row != std::end(result_codes)) return {row->number, std::string(row->text)};
  return {internal_error, "Internal error of the database engine."};
}

}  // namespace engine::embedded::jet_sql
