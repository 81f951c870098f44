#include "database/zone_table.h"

#include <algorithm>

#include "support/encoding.h"

namespace database {
namespace {

constexpr std::size_t ini_buffer_size = 4096;

std::string ini_value(const Environment& environment, std::string_view key, std::string_view fallback) {
  if (!environment.ini || environment.settings_file.empty()) return std::string(fallback);
  return environment.ini->value(environment.settings_file, "timezones", key, fallback, ini_buffer_size);
}

/// The default also replaces a text in the file that is no time.
engine::Date time_from_file(const Environment& environment, std::string_view key, std::string_view default_time) {
  return zone_time(ini_value(environment, key, default_time)).value_or(zone_time(default_time).value());
}

/// The description, shortened to what the settings' columns can hold.
std::string description_from_file(const Environment& environment) {
  constexpr std::size_t column_size = 50;
  return std::string(support::first_characters(ini_value(environment, "TimeSlotDesc", ""), column_size));
}

}  // namespace

std::string zone_name(const Environment& environment, const ZoneRow& row) {
  if (row.name_text == 0) return {};
  std::string name = environment.text(row.name_text);
  if (row.name_addition_text != 0) name += " (" + environment.text(row.name_addition_text) + ")";
  return name;
}

std::optional<engine::Date> zone_time(std::string_view hhmm) {
  const auto is_digit = [](char character) { return character >= '0' && character <= '9'; };
  if (hhmm.size() == 4 && std::all_of(hhmm.begin(), hhmm.end(), is_digit)) {
    const int hours = (hhmm[0] - '0') * 10 + (hhmm[1] - '0');
    const int minutes = (hhmm[2] - '0') * 10 + (hhmm[3] - '0');
    if (hours < 24 && minutes < 60) return engine::date_from(1899, 12, 30, hours, minutes);
  }
  return std::nullopt;
}

bool GetTimeZones(const Environment& environment, const Target& target, ZoneTable& zones, bool use_defaults) {
  support::Procedure procedure{"sql!GetTimeZones"};
  if (!use_defaults) {
    SettingsRecord settings;
    if (!db_GetSettings(environment, target, settings)) return false;
    zones = settings.zones;
    return true;
  }
  for (std::size_t i = 0; i < zone_rows.size(); ++i) {
    const ZoneRow& row = zone_rows[i];
    zones[i].from = time_from_file(environment, row.from_key, row.default_from);
    zones[i].until = time_from_file(environment, row.until_key, row.default_until);
    zones[i].description =
        row.description_column.empty() ? zone_name(environment, row) : description_from_file(environment);
  }
  return true;
}

}  // namespace database
