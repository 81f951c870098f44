#include "database/lab_definitions.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "support/text.h"

namespace database {
namespace {

/// A text of a row: as it stands, or the language text of a number.
struct RowText {
  constexpr RowText(const char* fixed) : text(fixed) {}           // NOLINT(google-explicit-constructor)
  constexpr RowText(long language) : text(), number(language) {}  // NOLINT(google-explicit-constructor)
  std::string_view text;
  long number = 0;
};

/// One laboratory value; -1 is no limit. Units are numbers of the diary's unit list.
struct DefinitionRow {
  std::int16_t type;
  std::string_view field;
  RowText description, exchange_key;
  std::int16_t unit, display_unit;
  double range_from, range_until, critical_threshold;
};

constexpr DefinitionRow new_database_rows[] = {
    {1, "iWeight", 5007L, 4960L, 4, 4, -1, -1, -1},         {2, "dBodyFat", 5006L, "BODYFAT", 2, 2, -1, -1, -1},
    {10, "dHbA", "HBA", "HBA", 2, 2, 5.1, 7.3, -1},         {11, "dHbAc", "HBA1c", "HBA1C", 2, 2, 4.1, 6.2, -1},
    {12, "iChol", 3516L, "CHOL", 0, 0, -1, 200, 180},       {13, "iAlbu", 3515L, "ALBU", 3, 3, -1, 20, 15},
    {14, "iHDL", 3518L, "HDL", 0, 0, 35, 50, -1},           {15, "iLDL", 3517L, "LDL", 0, 0, -1, 115, 100},
    {16, "iTri", 3519L, "TRIG", 0, 0, -1, 200, 170},        {17, "iCreatinin", 3520L, "KREA", 0, 0, 0.6, 1.3, -1},
    {18, "dKetones", 3521L, "KETONE", 1, 0, -1, 1.5, 0.6},  {19, "GLUC_PP", 3526L, "GLUC_PP", 0, 0, 120, 180, 170},
    {20, "GLUC_NUE", 3525L, "GLUC_NUE", 0, 0, 90, 120, -1}, {21, "Quick", 3527L, "QUICK", 2, 2, 11, 28, -1},
    {22, "INR", 3528L, "INR", 2, 2, 2.5, 4.5, -1},
};

/// A key is a caption's text without the mark of its access key.
std::string text_of(const Environment& environment, const RowText& row_text, bool is_key) {
  if (row_text.number == 0) return std::string(row_text.text);
  std::string text = environment.text(row_text.number);
  if (is_key) support::replace(text, "&", "");
  return text;
}

void add_definition(support::Procedure& procedure, engine::Recordset& rows, const Environment& environment,
                    const DefinitionRow& row) {
  const auto whole = [](std::int16_t number) { return engine::Value(std::int32_t{number}); };
  const std::pair<std::string_view, engine::Value> columns[] = {
      {"type", whole(row.type)},
      {"Field", std::string(row.field)},
      {"LongDesc", text_of(environment, row.description, false)},
      {"BDTKEY", text_of(environment, row.exchange_key, true)},
      {"Unit", whole(row.unit)},
      {"Units_allowed", whole(0)},
      {"DisplayUnit", whole(row.display_unit)},
      {"RangeFrom", row.range_from},
      {"RangeUntil", row.range_until},
      {"CriticalThreshold", row.critical_threshold},
  };
  if (!procedure.step([&] { rows.add_new(); })) return;
  for (const auto& column : columns) procedure.step([&] { rows.set_value(column.first, column.second); });
  procedure.step([&] { rows.update(); });
}

}  // namespace

void add_lab_definitions(const Environment& environment, engine::Database& database) {
  support::Procedure procedure{"sql!CreateTD_labdefs"};
  std::unique_ptr<engine::Recordset> rows;
  procedure.step([&] { rows = database.open_recordset("labdefs"); });
  if (!rows) return;
  for (const DefinitionRow& row : new_database_rows) add_definition(procedure, *rows, environment, row);
}

}  // namespace database
