// What lies beside exported tables for whoever finds them: how values are written, and in which units.
#include <string_view>

#include "database/transfer/export.h"

namespace transfer {
namespace {

struct Unit {
  std::string_view fields, unit;
};

constexpr Unit units[] = {
    {"glucose.Value; patdat_setup.BGHypo, BGHyper, BGTargetMin, BGTargetMax", "mg/dl"},
    {"insulin.BolusIE, BasalIE; ip.TotalBolus, TotalBasal", "international units"},
    {"ip.PercentBolus, PercentBasal", "percent of a day's insulin"},
    {"pressure.BPSYS, BPDIA, BPMAP; patdat_setup.BPTarget…", "mmHg"},
    {"pressure.BPPulse", "beats a minute"},
    {"detailed_intakes.BE", "bread units"},
    {"detailed_intakes.KH, Protein, Fett, Wasser, Ballast", "g"},
    {"detailed_intakes.KCal", "kcal"},
    {"vDate, vTime", "local time; a day and its time of day stand in two fields"},
};

std::string_view form_text(Format format) {
  switch (format) {
    case Format::Csv:
      return "A file of comma-separated values for each table: names in the first row, rows end with CRLF, quotes "
             "stand around\r\na text that holds a comma, a quote (doubled) or a line break. A cell of nothing is Null, "
             "\"\" "
             "an empty text.\r\n_tables.csv, _fields.csv and _indexes.csv, always UTF-8, describe the tables: "
             "\"patientdb "
             "import\" needs them.\r\nA spreadsheet takes a text that begins with =, +, - or @ for a formula.";
    case Format::Json:
      return "A file of JSON for each table: an array with an object for each row.";
    case Format::Sqlite:
      return "One SQLite file without password. The tables _tables, _fields and _indexes describe the others:\r\n"
             "\"patientdb import\" needs them. A zero has no sign in it: -0 is 0.";
    default:
      return "One script of SQL statements, in one transaction.";
  }
}

}  // namespace

std::string readme_text(const ExportChoices& choices, const std::vector<ExportedTable>& tables) {
  std::string text =
      "Tables exported by patientdb. Nothing here is protected by a password: keep it as safe as the data "
      "are private.\r\n\r\n";
  text.append(form_text(choices.format)).append("\r\n\r\nTexts are ");
  text.append(encoding_name(choices.encoding)).append(". Yes/No is ");
  text += choices.format == Format::Json ? "true or false" : "-1 or 0";
  text +=
      ", decimals follow a point, a moment is ISO 8601 (day 1899-12-30 stands\r\nwhere only the time of day counts; "
      "\"days:\" and a number are days since then where that cannot tell it exactly).\r\n\r\nUnits\r\n";
  for (const Unit& row : units) text.append("  ").append(row.fields).append(": ").append(row.unit).append("\r\n");
  text +=
      "  -1 in a measured value: not measured\r\n\r\nA field \"Password\" is Null here, whatever it "
      "held.\r\n\r\nRows\r\n";
  for (const ExportedTable& table : tables) {
    text.append("  ").append(table.name).append(" (").append(table.file).append("): ");
    text.append(std::to_string(table.rows)).append("\r\n");
  }
  return text;
}

}  // namespace transfer
