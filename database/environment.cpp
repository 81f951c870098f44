#include "database/environment.h"

#include <fmt/core.h>

#include <algorithm>
#include <ctime>
#include <limits>

#include "support/encoding.h"
#include "support/error.h"

namespace database {
namespace {

engine::Date machine_time() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  if (!local) throw support::RuntimeError(support::error_number::invalid_call, "the machine's clock cannot be read");
  return engine::date_from(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday, local->tm_hour, local->tm_min,
                           local->tm_sec);
}

}  // namespace

std::string sentence(const RowsLeft& rows) {
  return fmt::format("{} of {} rows of {} could not be brought over and stay there{}", rows.left, rows.all, rows.table,
                     rows.reason.empty() ? "" : ": " + rows.reason);
}

engine::Date Environment::present() const { return now ? now() : machine_time(); }

std::string_view Environment::patient_password() const {
  return support::character_count(password) < shortest_password ? default_password : std::string_view(password);
}

void Environment::show_message(std::string_view message, std::uint32_t style) const {
  if (message_box) message_box(message, style, product_description);
}

std::int32_t progress_value(std::int64_t rows) {
  return static_cast<std::int32_t>(std::min<std::int64_t>(rows, std::numeric_limits<std::int32_t>::max()));
}

void end_if_interrupted(const Progress* progress) {
  if (progress != nullptr && progress->interrupted()) {
    throw support::RuntimeError(support::error_number::cancelled, "Interrupted; nothing of it was kept.");
  }
}

}  // namespace database
