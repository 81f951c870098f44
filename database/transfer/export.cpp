#include "database/transfer/export.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "database/transfer/table_writer.h"
#include "database/transfer/value_text.h"
#include "support/encoding.h"

namespace transfer {

namespace {

constexpr auto not_in_collection = support::error_number::item_not_found;
constexpr auto foreign_type = support::error_number::invalid_data_type;

std::unique_ptr<TableWriter> writer_of(const OutputFolder& folder, const ExportChoices& choices) {
  switch (choices.format) {
    case Format::Csv:
      return csv_writer(folder, choices.encoding);
    case Format::Json:
      return json_writer(folder);
    case Format::Sqlite:
      return plain_file_writer(folder);
    default:
      return sql_writer(folder, choices.encoding);
  }
}

std::vector<std::size_t> chosen_tables(const jet_import::Source& source, const std::vector<std::string>& names) {
  const std::vector<jet_import::SourceTable>& tables = source.tables();
  std::vector<std::size_t> positions;
  if (names.empty()) {
    for (std::size_t i = 0; i < tables.size(); ++i) positions.push_back(i);
  }
  for (const std::string& name : names) {
    const auto found =
        std::ranges::find_if(tables, [&](const auto& table) { return support::equal_ignoring_case(table.name, name); });
    if (found == tables.end()) throw support::RuntimeError(not_in_collection, "There is no table " + name + ".");
    const auto position = static_cast<std::size_t>(found - tables.begin());
    if (std::ranges::find(positions, position) == positions.end()) positions.push_back(position);
  }
  return positions;
}

/// The version record holds the password with which the database was created.
bool is_secret(const jet_import::SourceField& field) { return support::equal_ignoring_case(field.name, "Password"); }

class Export {
 public:
  Export(jet_import::Source& source, TableWriter& writer, const ExportChoices& choices, database::Progress* progress)
      : source_(source), writer_(writer), choices_(choices), progress_(progress) {}

  ExportReport run() {
    const std::vector<std::size_t> positions = chosen_tables(source_, choices_.tables);
    std::int64_t total = 0;
    for (const std::size_t position : positions) total += source_.tables()[position].row_count.value_or(0);
    if (progress_) progress_->start("", database::progress_value(total));
    for (const std::size_t position : positions) export_table(position);
    writer_.finish(layout_);
    if (progress_) progress_->finish();
    if (choices_.tables.empty()) {
      for (const std::string& name : source_.linked_tables()) {
        report_.notes.push_back(name + ": leads to another file, not exported");
      }
    }
    return std::move(report_);
  }

 private:
  void export_table(std::size_t position) {
    const jet_import::SourceTable& table = source_.tables()[position];
    for (const std::string& field : table.foreign_fields) {
      const std::string place = table.name + "." + field;
      if (!choices_.leave_out_foreign_fields) {
        throw support::RuntimeError(foreign_type, place + ": a field of bytes or objects cannot be exported");
      }
      report_.notes.push_back(place + ": bytes or objects, left out");
    }
    if (progress_) progress_->set_caption(table.name);
    StoredTable stored{table, writer_.begin_table(table), std::string(encoding_name(choices_.encoding)), 0};
    stored.rows = write_rows(position);
    writer_.end_table();
    if (table.row_count && *table.row_count != stored.rows) {
      throw support::RuntimeError(
          unknown_format, fmt::format("{}: {} of {} rows could be read", table.name, stored.rows, *table.row_count));
    }
    add_layout(layout_, stored);
    report_.tables.push_back({table.name, stored.file, stored.rows});
    note_negative_zeros(table.name);
  }

  std::int64_t write_rows(std::size_t position) {
    const jet_import::SourceTable& table = source_.tables()[position];
    const auto rows = source_.rows(position);
    std::vector<engine::Value> values(table.fields.size());
    std::int64_t count = 0;
    while (rows->next()) {
      database::end_if_interrupted(progress_);
      ++count;
      for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = is_secret(table.fields[i]) ? engine::Value(engine::Null{}) : rows->value(i);
        check(values[i], table, i, count);
      }
      try {
        writer_.add_row(values);
      } catch (const support::RuntimeError& error) {
        throw support::RuntimeError(error.number(), fmt::format("{}, row {}: {}", table.name, count, error.what()));
      }
      if (progress_) progress_->set_value(database::progress_value(done_ + count));
    }
    done_ += count;
    return count;
  }

  void check(const engine::Value& value, const jet_import::SourceTable& table, std::size_t field, std::int64_t row) {
    const std::optional<double> number = engine::floating_number(value);
    const auto* text = std::get_if<std::string>(&value);
    const bool writable = number ? !std::isnan(*number) || holds_any_double() : !text || is_writable(*text);
    if (engine::is_negative_zero(value)) ++negative_zeros_;
    if (writable) return;
    const std::string place = fmt::format("{}.{}, row {}: ", table.name, table.fields[field].name, row);
    if (number)
      throw support::RuntimeError(cannot_convert, place + "what is no number (NaN) has no place in this form");
    if (!support::is_utf8(*text)) throw support::RuntimeError(unknown_format, place + "a text is not UTF-8");
    throw support::RuntimeError(cannot_convert, place + "a character that code page 1252 does not have");
  }

  /// SQL has no word for a value that is no number, and SQLite takes it for Null.
  bool holds_any_double() const { return choices_.format == Format::Csv || choices_.format == Format::Json; }

  /// SQLite stores -0 as 0.
  void note_negative_zeros(const std::string& table) {
    const std::int64_t count = std::exchange(negative_zeros_, 0);
    if (count == 0 || choices_.format != Format::Sqlite) return;
    report_.notes.push_back(fmt::format("{}: {} times -0, which this form holds as 0", table, count));
  }

  bool is_writable(const std::string& text) const {
    return choices_.encoding == TextEncoding::Cp1252 ? support::fits_cp1252(text) : support::is_utf8(text);
  }

  jet_import::Source& source_;
  TableWriter& writer_;
  const ExportChoices& choices_;
  database::Progress* progress_;
  LayoutRows layout_;
  ExportReport report_;
  std::int64_t done_ = 0;            ///< number of rows of the tables before
  std::int64_t negative_zeros_ = 0;  ///< in the present table
};

}  // namespace

ExportReport export_tables(jet_import::Source& source, const std::string& folder, const ExportChoices& choices,
                           database::Progress* progress) {
  OutputFolder output(folder);
  ExportReport report;
  {
    const auto writer = writer_of(output, choices);
    report = Export(source, *writer, choices, progress).run();
  }
  OutputFile readme(output.file("README.txt"));
  readme.write(readme_text(choices, report.tables));
  readme.close();
  output.finish();
  return report;
}

// README.txt tells whoever finds exported tables how values are written, and in which units.
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
