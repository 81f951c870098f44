#include "database/availability.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "database/engine/format/format.h"
#include "database/open_database.h"
#include "database/query_filter.h"
#include "support/user_locale.h"

namespace database {
namespace {

struct Category {
  std::string_view table;
  /// A condition that selects this category's rows of the table; empty where all rows are the category's.
  std::string_view criterion;
  /// The aggregates whose sum is the checksum, joined by "+". `typ` is the category's number unless the table has a
  /// column of that name.
  std::string_view checksum;
  bool knows_imports = true;
  std::string_view day_column = "vdate";
  bool has_times = true;
};

constexpr std::string_view value_checksum = "avg(value)+count(vdate)+typ+stdev(vdate)+stdev(vtime)";
constexpr std::string_view insulin_checksum =
    "avg(bolusie)+avg(basalie)+avg(rapid)+count(vdate)+stdev(vdate)+stdev(vtime)";
constexpr std::string_view pump_checksum = "avg(amount)+count(vdate)+stdev(vdate)";
constexpr std::string_view lab_checksum = "avg(value)+avg(type)+avg(id)+count(vdate)+stdev(vdate)";
constexpr std::string_view note_checksum = "avg(typ)+count(vdate)";

/// An element's position is the number of its category. Callers store these numbers: never change the order.
constexpr std::array<Category, 28> categories = {{
    {"glucose", "", value_checksum},
    {"insulin", "", insulin_checksum},
    {"insulinpump", "", pump_checksum},
    {"pressure", "", "avg(bpsys)+avg(bpdia)+count(vdate)+stdev(vdate)+stdev(vtime)"},
    {"intakes", "", value_checksum},
    {"activities", "", value_checksum},
    {"medicaldata", "", value_checksum},
    {"eventlog", "", "avg(event)+count(vdate)+stdev(vdate)+stdev(vtime)"},
    {"patdat_doctor", "", note_checksum, false},
    {"labvalues", "type>=10", lab_checksum},
    {"insulinpump", "event>0", "avg(amount)+count(vdate)+stdev(vdate)+stdev(vtime)"},
    {"glucose", "bloodtype=255", value_checksum},
    {"labvalues", "(type=1 or type=2) and value >0 ", lab_checksum},
    {"labvalues", "type=11", lab_checksum},
    {"memos", "", note_checksum, false},
    {"glucose", "event IN (2,4,16,18) ", value_checksum},
    {"glucose", "event IN (3,5,17,19) ", value_checksum},
    {"insulin", "(bolusie>0 and basalie=0 and rapid=0)", insulin_checksum},
    {"insulin", "(bolusie=0 and basalie>0)", insulin_checksum},
    {"insulin", "(bolusie>0 and basalie=0 and rapid<>0)", insulin_checksum},
    {"import", "", "avg(typ)+count(dateofimport)", false, "dateofimport", false},
    {"callback", "category=0", note_checksum, false, "vdate", false},
    {"insulinpump", "type=1 and amount >0 ", pump_checksum},
    {"insulinpump", "type>1 and amount>0 ", pump_checksum},
    {"insulin", "(bolusie>0 and basalie>0 and rapid=0)", insulin_checksum},
    {"callback", "category=2", note_checksum, false, "vdate", false},
    {"callback", "category=1", note_checksum, false, "vdate", false},
    {"steps", "", "avg(total_ns)+count(vdate)+typ+stdev(vdate)+stdev(vtime)"},
}};

bool is_asked_for(const AvailabilityRequest& request, std::size_t category) {
  return (static_cast<std::uint32_t>(request.categories) >> category & 1U) != 0;
}

/// A range of times holds no entry of a category whose entries have no time of day.
bool is_left_out(const AvailabilityRequest& request, std::size_t category) {
  return request.days && request.times && !categories[category].has_times;
}

bool selected(const AvailabilityRequest& request, std::size_t category) {
  return is_asked_for(request, category) && !is_left_out(request, category);
}

std::string day_range(const AvailabilityRequest& request) {
  if (!request.days) return {};
  std::string text =
      " AND  (vdate BETWEEN " + date_literal(request.days->first) + " AND " + date_literal(request.days->second) + ") ";
  if (request.times) {
    text += "  AND " + times_condition(request.times->first, request.times->second) + " ";
  }
  return text;
}

std::string import_clause(const AvailabilityRequest& request, const Category& category) {
  if (request.import_id < 0 || !category.knows_imports) return {};
  return fmt::format(" AND (importid={})", request.import_id);
}

std::string category_query(const AvailabilityRequest& request, std::size_t number) {
  const Category& category = categories[number];
  std::string text =
      "SELECT count(vdate) as nCount, [TYPE] as typ,  [ICRC] max(vdate) as maxdate, min(vdate) as mindate FROM [TABLE] "
      "WHERE isnull(vdate)=0 [DATERANGE]   [DAYS]    [CRIT]    [IMPORTID]";
  put_in(text, "[TABLE]", category.table);
  put_in(text, "[DATERANGE]", day_range(request));
  put_in(text, "[DAYS]", weekday_clause(request.weekdays));
  put_in(text, "[CRIT]", category.criterion.empty() ? "" : " AND (" + std::string(category.criterion) + ")");
  put_in(text, "[TYPE]", std::to_string(number));
  put_in(text, "[ICRC]", " (" + std::string(category.checksum) + ") as iCRC,");
  put_in(text, "[IMPORTID]", import_clause(request, category));
  if (category.day_column != "vdate") put_in(text, "vdate", category.day_column);
  return text;
}

/// Returns the category's line, or nothing where it has no rows.
std::optional<Availability> read_category(engine::Database& database, const AvailabilityRequest& request,
                                          std::size_t number) {
  const auto row = database.open_forward_only(category_query(request, number));
  Availability entry;
  entry.category = static_cast<std::int16_t>(number);
  entry.count = engine::to_int32(row->value("ncount"));
  if (entry.count < 1) return std::nullopt;
  entry.first = engine::to_date(row->value("mindate"));
  entry.last = engine::to_date(row->value("maxdate"));
  const engine::Value checksum = row->value("icrc");
  if (!engine::is_null(checksum)) entry.checksum = engine::to_double(checksum);
  return entry;
}

std::string day_text(engine::Date day) { return engine::iso_text(day).substr(0, 10); }

/// The decimal separator is ".", whatever the user's locale is.
std::string checksum_text(const std::optional<double>& checksum) {
  if (!checksum) return {};
  std::string text = engine::format(*checksum, "0.00000000000");
  std::ranges::replace(text, support::user_locale().decimal_separator, '.');
  return text;
}

}  // namespace

std::string availability_query(const AvailabilityRequest& request) {
  std::string text;
  for (std::size_t number = 0; number < categories.size(); ++number) {
    if (!selected(request, number)) continue;
    if (!text.empty()) text += " UNION ";
    text += category_query(request, number);
  }
  return text + " ORDER BY typ ASC";
}

std::vector<std::int16_t> categories_without_times(const AvailabilityRequest& request) {
  std::vector<std::int16_t> numbers;
  for (std::size_t number = 0; number < categories.size(); ++number) {
    if (is_asked_for(request, number) && is_left_out(request, number)) {
      numbers.push_back(static_cast<std::int16_t>(number));
    }
  }
  return numbers;
}

std::vector<Availability> find_availability(const Environment& environment, const Target& target,
                                            const AvailabilityRequest& request) {
  support::Procedure procedure{"sql!SQL_GetAvailableData"};
  const OpenedTarget opened(environment, target, OpenedTarget::Access::Read);
  std::vector<Availability> found;
  for (std::size_t number = 0; number < categories.size(); ++number) {
    if (!selected(request, number)) continue;
    const bool read = procedure.step([&] {
      if (auto entry = read_category(opened.database(), request, number)) found.push_back(*entry);
    });
    // One UNION statement would fail as a whole, so this function does, too.
    if (!read) return {};
  }
  return found;
}

std::string availability_summary(const Environment& environment, const Target& target,
                                 const AvailabilityRequest& request) {
  std::string text;
  for (const Availability& entry : find_availability(environment, target, request)) {
    text += fmt::format("{}|{}|{}|{}\r\n", entry.category, day_text(entry.first), day_text(entry.last),
                        checksum_text(entry.checksum));
  }
  return text;
}

}  // namespace database
