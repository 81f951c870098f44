#include "database/keeping/check.h"

#include <memory>
#include <optional>
#include <utility>

#include "database/engine/embedded/database_file.h"
#include "database/engine/file_care.h"
#include "database/file_failure.h"
#include "database/keeping/layout_check.h"
#include "database/keeping/row_check.h"
#include "database/open_database.h"
#include "support/encoding.h"

namespace database::keeping {
namespace {

/// Opens the file. If it is too damaged to open, adds the finding and returns null.
std::unique_ptr<engine::Database> open(engine::Engine& engine, std::string_view path, std::string_view password,
                                       CheckReport& report) {
  try {
    return engine.open_database(path, false, true, connect_text(password));
  } catch (const engine::embedded::JetFileError&) {
    throw;
  } catch (const support::RuntimeError& error) {
    if (error.number() != support::error_number::unknown_format) throw;
    report.findings.push_back({"file", {}, {}, std::string("cannot be opened as a database: ") + error.what()});
    return nullptr;
  }
}

bool has_table(engine::Database& database, std::string_view name) {
  engine::TableDefs& tables = database.table_defs();
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    if (support::equal_ignoring_case(tables.item(i)->name(), name)) return true;
  }
  return false;
}

/// Reads the record. Nothing where the file has none that can be read; if it should have one, that is a finding.
std::optional<VersionRecord> read_record(const Environment& environment, engine::Database& database,
                                         CheckReport& report) {
  if (!has_table(database, "db_info")) return std::nullopt;
  VersionRecord record;
  bool read = false;
  const support::Outcome outcome = support::outcome_of([&] { read = db_ReadDBInfo(environment, database, record); });
  if (read) return record;
  const std::string reason = outcome.last() ? outcome.last()->what() : "is not of this product";
  report.findings.push_back({"layout", "db_info", {}, "the version record cannot be read: " + reason});
  return std::nullopt;
}

/// Checks what lies below the tables. False where no table can be read.
bool look_below(const Environment& environment, engine::FileCare& care, CheckReport& report) {
  Progress* const progress = environment.progress;
  bool started = false;
  const bool readable = care.check(
      [&report](const engine::FileFault& fault) {
        report.findings.push_back({std::string(fault.kind), fault.table, {}, fault.text, fault.rows});
      },
      [&](std::int64_t done, std::int64_t all) {
        if (!progress) return;
        if (!std::exchange(started, true)) progress->start("pages", progress_value(all));
        progress->set_value(progress_value(done));
        end_if_interrupted(progress);
      });
  if (started) progress->finish();
  return readable;
}

/// Runs a part of the check. Damage may end it early.
template <typename Part>
void attempt(std::string_view what, CheckReport& report, Part&& part) {
  try {
    std::forward<Part>(part)();
  } catch (const support::RuntimeError& error) {
    if (error.number() != support::error_number::unknown_format) throw;
    report.findings.push_back({"file", {}, {}, std::string(what) + " cannot be read: " + error.what()});
  }
}

}  // namespace

CheckReport check_database(const Environment& environment, std::string_view path, std::string_view password) {
  CheckReport report;
  const auto engine = create_engine(environment, false);
  const auto database = open(*engine, path, password, report);
  if (!database) return report;
  engine::FileCare* const care = database->care();
  if (!care) report.notes.emplace_back("The file is of the Jet engine: its pages and structure were not looked at.");
  attempt("the file", report, [&] {
    // The check sees one state of the file, whatever others write. With other engines each query sees a state of its
    // own.
    const auto state = care ? std::make_unique<engine::Transaction>(*database) : nullptr;
    if (care && !look_below(environment, *care, report)) return;
    attempt("the layout", report, [&] {
      const std::optional<VersionRecord> record = read_record(environment, *database, report);
      check_layout(*database, record ? &*record : nullptr, report);
    });
    check_rows(environment, *database, report);
  });
  return report;
}

}  // namespace database::keeping
