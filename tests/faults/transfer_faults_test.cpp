// Exporting tables and importing them again, interrupted at every point: the folder or the database exists as a whole
// or not at all.
#include <chrono>

#include "database/jet_import/engine_source.h"
#include "database/jet_import/import.h"
#include "database/transfer/export.h"
#include "database/transfer/exported_source.h"
#include "tests/faults/database_faults.h"
#include "tests/support/file_content.h"

namespace database::testing {
namespace {

namespace fs = std::filesystem;
using transfer::Format;

/// The content of a folder's files, by name; nothing if the folder does not exist.
using Content = std::map<std::string, std::string>;

class TransferFaults : public DatabaseFaults {
 protected:
  std::string folder() const { return host(path("")) + "out"; }

  Content content() const {
    Content found;
    if (!fs::exists(folder())) return found;
    for (const auto& entry : fs::directory_iterator(folder()))
      found[entry.path().filename().string()] = support::testing::content_of(entry.path()).value_or("");
    return found;
  }

  /// The folders beside the databases, by name.
  std::vector<std::string> folders() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(host(path("")))) {
      if (entry.is_directory()) found.push_back(entry.path().filename().string());
    }
    return found;
  }

  /// A patient's database with so many rows in one table that each form needs several writes.
  std::string filled_database() {
    std::string file = patient_database();
    const std::string text(2000, 'x');
    execute(file, {"CREATE TABLE notes (n LONG, text MEMO)"});
    for (int i = 0; i < 60; ++i)
      execute(file, {"INSERT INTO notes VALUES (" + std::to_string(i) + ", '" + text + "')"});
    return file;
  }

  bool exports(const std::string& file, Format format) const {
    try {
      Opened opened = open(file);
      opened.database->begin_transaction();
      const auto source = jet_import::engine_source(std::move(opened.engine), std::move(opened.database));
      transfer::export_tables(*source, folder(), {.format = format, .tables = {"patdat", "notes"}}, nullptr);
      return true;
    } catch (const support::RuntimeError&) {
      return false;
    }
  }

  void remove_folders() const {
    for (const std::string& name : folders()) fs::remove_all(host(path("")) + name);
  }

  void sweep_over_export(const char* name, Format format) {
    const std::string file = filled_database(), before = state(file);
    Content whole;
    const auto check = [&](Ended ended) {
      const Content found = content();
      if (whole.empty()) whole = found;
      EXPECT_TRUE(found.empty() || found == whole) << "a part of an export";
      EXPECT_EQ(files(), std::vector<std::string>{"patient.das"});
      if (ended == Ended::Died) return;
      EXPECT_EQ(found == whole, ended == Ended::Succeeded);
      EXPECT_EQ(folders().size(), found.empty() ? 0U : 1U) << ::testing::PrintToString(folders());
    };
    faults::sweep(name, {[this] { remove_folders(); }, {}, [&] { return exports(file, format); }, check});
    EXPECT_GT(whole.size(), 1U);
    EXPECT_EQ(state(file), before);
  }

  void sweep_over_import(const char* name, Format format) {
    ASSERT_TRUE(exports(filled_database(), format));
    const Content before = content();
    sweep_over_new_file(name, path("back.das"), [&] {
      try {
        const auto source = transfer::open_exported(folder());
        jet_import::import_database(environment, *source, path("back.das"), {.password = environment.password});
        return true;
      } catch (const support::RuntimeError&) {
        return false;
      }
    });
    EXPECT_EQ(content(), before);
  }
};

TEST_F(TransferFaults, AnExportAsCsvIsWholeOrNotThere) { sweep_over_export("an export as csv", Format::Csv); }

TEST_F(TransferFaults, AnExportAsJsonIsWholeOrNotThere) { sweep_over_export("an export as json", Format::Json); }

TEST_F(TransferFaults, AnExportAsSqliteIsWholeOrNotThere) { sweep_over_export("an export as sqlite", Format::Sqlite); }

TEST_F(TransferFaults, AnExportAsSqlIsWholeOrNotThere) { sweep_over_export("an export as sql", Format::Sql); }

TEST_F(TransferFaults, AnImportOfCsvLeavesAWholeDatabaseOrNone) { sweep_over_import("an import of csv", Format::Csv); }

TEST_F(TransferFaults, AnImportOfSqliteLeavesAWholeDatabaseOrNone) {
  sweep_over_import("an import of sqlite", Format::Sqlite);
}

TEST_F(TransferFaults, AnExportThatWasReportedSurvivesAPowerCut) {
  const std::string file = filled_database();
  for (const Format format : {Format::Csv, Format::Json, Format::Sqlite, Format::Sql}) {
    const faults::Work work{[this] { remove_folders(); }, {}, [&] { return exports(file, format); }, {}};
    ASSERT_TRUE(faults::run_undisturbed(work));
    const Content whole = content();
    for (const faults::Fault cut : {faults::Fault::PowerCut, faults::Fault::TornPowerCut}) {
      ASSERT_EQ(faults::run_and_cut_power(cut, work), Ended::Succeeded);
      EXPECT_TRUE(content() == whole) << faults::name_of(cut);
    }
  }
}

TEST_F(TransferFaults, TheNextExportCleansUpAfterOneThatWasKilled) {
  const std::string file = filled_database();
  const faults::Work work{[] {}, {}, [&] { return exports(file, Format::Csv); }, {}};
  ASSERT_EQ(faults::run_with_fault(faults::Fault::Killed, 4, work), Ended::Died);
  ASSERT_EQ(folders().size(), 1U);
  const fs::path left = host(path("")) + folders().front();
  ASSERT_FALSE(fs::is_empty(left));
  const auto export_again = [&] {
    fs::remove_all(folder());
    EXPECT_TRUE(faults::run_undisturbed(work));
    return folders().size() == 1;
  };
  EXPECT_FALSE(export_again()) << "what is young may be of a process that lives";
  const auto age = fs::file_time_type::clock::now() - std::chrono::minutes(11);
  for (const auto& entry : fs::directory_iterator(left)) fs::last_write_time(entry.path(), age);
  fs::last_write_time(left, age);
  EXPECT_TRUE(export_again());
}

}  // namespace
}  // namespace database::testing
