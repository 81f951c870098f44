#include "database/schema/schema.h"

#include <array>
#include <iterator>

#include "support/encoding.h"

namespace database::schema {
namespace {

constexpr std::string_view creation_order[] = {
    "db_info",
    "activities",
    "glucose",
    "pressure",
    "import",
    "insulin",
    "intakes",
    "detailed_intakes",
    "medicaldata",
    "patdat",
    "patdat_doctor",
    "patdat_labs",
    "patdat_setup",
    "Memos",
    "EventProt",
    "eventlog",
    "sysevents",
    "insulinpump",
    "PumpConfiguration",
    "ip",
    "labdefs",
    "steps",
    "labvalues",
    "templates",
    "template_activities",
    "template_insulin",
    "template_intakes",
    "template_detailed_intakes",
    "template_medicaldata",
    "Behandlungsprofil",
    "Labordefinitionen",
    "day_info",
    "healthpass",
    "preferredInsulin",
    "preferredMedicals",
    "Comments",
    "CustomEvents",
    "reminder",
    "defaultinsulin",
    "defaultoad",
    "callback",
    "therapieplan",
    "therapieplan_details",
};

constexpr std::string_view data_table_names[] = {
    "glucose", "pressure", "insulin", "intakes", "medicaldata", "activities", "eventlog", "labvalues", "insulinpump",
};

TableRow row_of_subject(std::string_view name) {
  for (const auto subject : {measurement_tables, patient_tables, reference_tables, plan_tables}) {
    for (const TableRow& row : subject) {
      if (row.name == name) return row;
    }
  }
  return {name, {}, {}};
}

std::array<TableRow, std::size(creation_order)> rows_in_creation_order() {
  std::array<TableRow, std::size(creation_order)> rows;
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = row_of_subject(creation_order[i]);
  return rows;
}

}  // namespace

std::span<const TableRow> tables() {
  static const auto rows = rows_in_creation_order();
  return rows;
}

const TableRow* find_table(std::string_view name) {
  for (const TableRow& row : tables()) {
    if (support::equal_ignoring_case(row.name, name)) return &row;
  }
  return nullptr;
}

std::span<const std::string_view> data_tables() { return data_table_names; }

}  // namespace database::schema
