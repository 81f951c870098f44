#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "database/engine/embedded/jet_sql/function_call.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

struct ResultRow {
  int result;
  error_number::Number number;
  std::string_view detail = {};
};

// SQLite's own messages may quote the statement, and with it what is stored; none of them is passed on.
constexpr ResultRow result_codes[] = {
    {SQLITE_BUSY, error_number::file_in_use},
    {SQLITE_LOCKED, error_number::table_in_use},
    {SQLITE_NOMEM, error_number::out_of_memory},
    {SQLITE_READONLY, error_number::read_only},
    {SQLITE_INTERRUPT, error_number::cancelled},
    {SQLITE_IOERR, error_number::disk_error},
    {SQLITE_FULL, error_number::disk_error, "the disk is full"},
    {SQLITE_CORRUPT, error_number::unknown_format, "the file is damaged"},
    {SQLITE_NOTADB, error_number::unknown_format},
    {SQLITE_CANTOPEN, error_number::file_not_opened},
    {SQLITE_PERM, error_number::file_not_opened},
    {SQLITE_AUTH, error_number::file_not_opened},
    {SQLITE_TOOBIG, error_number::out_of_string_space},
    {SQLITE_MISMATCH, error_number::conversion},
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
  const int code = result & 0xFF;
  const char* const message = sqlite3_errmsg(connection);
  if (code == SQLITE_ERROR && message != nullptr) {
    if (const auto own = own_error(message)) return *own;
  }
  if (code == SQLITE_CONSTRAINT) {
    const bool null = sqlite3_extended_errcode(connection) == SQLITE_CONSTRAINT_NOTNULL;
    return engine_error(null ? error_number::field_required : error_number::duplicate_value);
  }
  const auto* const row = std::ranges::find(result_codes, code, &ResultRow::result);
  return row != std::end(result_codes) ? engine_error(row->number, row->detail)
                                       : engine_error(error_number::internal_error);
}

}  // namespace engine::embedded::jet_sql
