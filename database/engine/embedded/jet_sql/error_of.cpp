#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "database/engine/embedded/jet_sql/error_numbers.h"
#include "database/engine/embedded/jet_sql/function_call.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"

namespace engine::embedded::jet_sql {

namespace {

struct ResultRow {
  int result;
  int number;
  std::string_view detail = {};
};

// SQLite's own messages may quote the statement, and with it what is stored; none of them is passed on.
constexpr ResultRow result_codes[] = {
    {SQLITE_BUSY, 3045},
    {SQLITE_LOCKED, 3211},
    {SQLITE_NOMEM, 7},
    {SQLITE_READONLY, 3027},
    {SQLITE_INTERRUPT, 3059},
    {SQLITE_IOERR, 3043},
    {SQLITE_FULL, 3043, "the disk is full"},
    {SQLITE_CORRUPT, 3343, "the file is damaged"},
    {SQLITE_NOTADB, 3343},
    {SQLITE_CANTOPEN, 3051},
    {SQLITE_PERM, 3051},
    {SQLITE_AUTH, 3051},
    {SQLITE_TOOBIG, 14},
    {SQLITE_MISMATCH, error_conversion},
};

/// What report_current_exception() wrote; nothing where the message is SQLite's own.
std::optional<support::RuntimeError> own_error(std::string_view message) {
  if (!message.starts_with(own_error_mark)) return std::nullopt;
  message.remove_prefix(own_error_mark.size());
  int number = 0;
  const auto parsed = std::from_chars(message.data(), message.data() + message.size(), number);
  const auto used = static_cast<std::size_t>(parsed.ptr - message.data());
  if (parsed.ec != std::errc{} || used >= message.size() || message[used] != ':') return std::nullopt;
  return support::RuntimeError(number, std::string(message.substr(used + 1)));
}

}  // namespace

support::RuntimeError error_of(sqlite3* connection, int result) {
  constexpr int internal_error = 51;
  const int code = result & 0xFF;
  const char* const message = sqlite3_errmsg(connection);
  if (code == SQLITE_ERROR && message != nullptr) {
    if (const auto own = own_error(message)) return *own;
  }
  if (code == SQLITE_CONSTRAINT) {
    const bool null = sqlite3_extended_errcode(connection) == SQLITE_CONSTRAINT_NOTNULL;
    return engine_error(null ? error_field_required : error_duplicate_value);
  }
  const auto* const row = std::ranges::find(result_codes, code, &ResultRow::result);
  return row != std::end(result_codes) ? engine_error(row->number, row->detail) : engine_error(internal_error);
}

}  // namespace engine::embedded::jet_sql
