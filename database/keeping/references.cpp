#include "database/keeping/references.h"

#include <string>

namespace database::keeping {
namespace {

// clang-format off
constexpr Reference all_references[] = {
    {"therapieplan_details",      "lID",         "therapieplan",     "ID"},
    {"detailed_intakes",          "lID",         "intakes",          "ID"},
    {"template_detailed_intakes", "lID",         "template_intakes", "ID"},
    {"template_medicaldata",      "TEMPLATE_ID", "templates",        "TEMPLATE_ID"},
    {"template_activities",       "TEMPLATE_ID", "templates",        "TEMPLATE_ID"},
    {"template_insulin",          "TEMPLATE_ID", "templates",        "TEMPLATE_ID"},
    {"template_intakes",          "TEMPLATE_ID", "templates",        "TEMPLATE_ID"},
    {"glucose",                   "importid",    "import",           "id", true},
    {"insulin",                   "importid",    "import",           "id", true},
    {"insulinpump",               "importid",    "import",           "id", true},
    {"pressure",                  "importid",    "import",           "id", true},
    {"intakes",                   "importid",    "import",           "id", true},
    {"activities",                "importid",    "import",           "id", true},
    {"steps",                     "importid",    "import",           "id", true},
    {"medicaldata",               "importid",    "import",           "id", true},
    {"eventlog",                  "importid",    "import",           "id", true},
    {"PumpConfiguration",         "importid",    "import",           "id", true},
    {"labvalues",                 "importid",    "import",           "id", true},
    {"patdat_labs",               "importid",    "import",           "id", true},
};
// clang-format on

/// Rounds down also below 0, so that all numbers of one chunk have the same quotient.
constexpr std::int32_t chunk_of(std::int32_t number, std::int32_t size) {
  return number / size - (number % size < 0 ? 1 : 0);
}

}  // namespace

std::span<const Reference> references() { return all_references; }

void NumberSet::insert(std::int32_t number) {
  const std::int32_t chunk = chunk_of(number, chunk_size);
  chunks_[chunk].set(static_cast<std::size_t>(number - std::int64_t{chunk} * chunk_size));
}

bool NumberSet::contains(std::int32_t number) const {
  const std::int32_t chunk = chunk_of(number, chunk_size);
  const auto found = chunks_.find(chunk);
  return found != chunks_.end() &&
         found->second.test(static_cast<std::size_t>(number - std::int64_t{chunk} * chunk_size));
}

NumberSet numbers_of(engine::Database& database, std::string_view table, std::string_view field) {
  NumberSet numbers;
  const auto rows = database.open_forward_only("SELECT [" + std::string(field) + "] FROM [" + std::string(table) + "]");
  for (; !rows->eof(); rows->move_next()) {
    const engine::Value value = rows->value(0);
    if (!engine::is_null(value)) numbers.insert(engine::to_int32(value));
  }
  return numbers;
}

}  // namespace database::keeping
