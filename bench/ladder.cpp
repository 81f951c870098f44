// The whole ladder from layout 4.0, with the conversion of pump data: through db_WriteDBInfo, and by hand with the same
// changes of layout and statements in one transaction.
#include "database/upgrade/ladder.h"

#include <map>
#include <stdexcept>

#include "bench/jobs.h"
#include "bench/long_history.h"
#include "bench/patient_file.h"
#include "bench/pump_conversion.h"
#include "bench/straight.h"
#include "database/version_record.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

void upgrade_ours(const fs::path& file) {
  const database::Environment environment = willing_environment();
  database::VersionRecord record;
  const std::string path = windows_path(file);
  if (!database::db_ReadDBInfo(environment, path, record) || record.MinVersion != 0 ||
      database::db_WriteDBInfo(environment, path, record) != 1) {
    throw std::runtime_error("not upgraded");
  }
}

/// Every "table.column" and "table" of a file, with the statement that adds it.
std::map<std::string, std::string> layout_of(const fs::path& file, const std::string& key) {
  const StraightDatabase database = open_straight(file.string(), key);
  const StraightStatement parts = prepare(
      database.get(),
      "SELECT t.name||'.'||c.name, 'ALTER TABLE \"'||t.name||'\" ADD COLUMN \"'||c.name||'\" '||c.type, t.name FROM "
      "sqlite_master t, pragma_table_info(t.name) c WHERE t.type='table' UNION ALL SELECT name, sql, tbl_name FROM "
      "sqlite_master WHERE sql IS NOT NULL");
  std::map<std::string, std::string> layout;
  while (sqlite3_step(parts.get()) == SQLITE_ROW) {
    const auto text = [&](int column) {
      return std::string(reinterpret_cast<const char*>(sqlite3_column_text(parts.get(), column)));
    };
    if (!text(2).starts_with("jet.")) layout.emplace(text(0), text(1));
  }
  return layout;
}

/// The part of the layout that an upgrade has added, as SQLite's statements, tables before their indexes.
std::vector<std::string> layout_changes(const fs::path& before, const fs::path& after, const std::string& key) {
  const auto old = layout_of(before, key);
  std::vector<std::string> tables, rest;
  for (const auto& [name, statement] : layout_of(after, key)) {
    const std::string table = name.substr(0, name.find('.'));
    if (old.contains(name)) continue;
    if (statement.starts_with("CREATE TABLE")) {
      tables.push_back(statement);
    } else if (statement.starts_with("CREATE") || old.contains(table)) {
      rest.push_back(statement);
    }
  }
  tables.insert(tables.end(), rest.begin(), rest.end());
  return tables;
}

/// The ladder's statements on rows. The columns that they need exist already.
constexpr const char* row_changes[] = {
    R"(UPDATE preferredInsulin SET bSelectable=-1, iSortOrder=s.n
       FROM (SELECT rowid AS r, row_number() OVER (ORDER BY manufacturer)-1 AS n FROM preferredInsulin) s
       WHERE rowid=s.r)",
    "UPDATE Labordefinitionen SET LaborID=0 WHERE LaborID<=0 OR LaborID IS NULL",
    "UPDATE patdat_labs SET labor_id=0 WHERE labor_id<=0 OR labor_id IS NULL",
    "UPDATE insulin SET Event=Event+50 WHERE Event BETWEEN 20 AND 27",
    "UPDATE glucose SET Event=Event+50 WHERE Event BETWEEN 20 AND 27",
    "UPDATE intakes SET Event=Event+50 WHERE Event BETWEEN 20 AND 27",
    "UPDATE medicaldata SET Event=Event+50 WHERE Event BETWEEN 20 AND 27",
    "UPDATE template_insulin SET Event=Event+50 WHERE Event BETWEEN 20 AND 27",
    "DELETE FROM imports",
    "UPDATE glucose SET Bloodtype=0 WHERE Bloodtype IS NULL",
    "DROP TABLE imports",
    "DELETE FROM labdefs",
    R"(INSERT INTO labvalues(ID,type,value,vdate,method,sComment)
       SELECT row_number() OVER (), 1, iWeight, vDate, 0, substr(memo,1,255) FROM day_info WHERE iWeight>0)",
    R"(INSERT INTO labvalues(ID,type,value,vdate,method,sComment)
       SELECT row_number() OVER (), 2, dBodyFat, vDate, 0, substr(memo,1,255) FROM day_info WHERE dBodyFat>0)",
    "UPDATE glucose SET Bloodtype=0 WHERE Bloodtype IS NULL",
};

constexpr const char* laboratory_columns[] = {"dHbA",       "dHbAc",    "iChol",   "iAlbu",    "iHDL",  "iLDL", "iTri",
                                              "iCreatinin", "dKetones", "GLUC_PP", "GLUC_NUE", "Quick", "INR"};

void upgrade_straight(const fs::path& file, const std::string& key, const std::vector<std::string>& layout) {
  const StraightDatabase database = open_straight(file.string(), key);
  execute(database.get(), "BEGIN IMMEDIATE");
  for (const std::string& change : layout) execute(database.get(), change);
  for (const char* change : row_changes) execute(database.get(), change);
  for (const std::string column : laboratory_columns) {
    execute(database.get(),
            "INSERT INTO labvalues(ID,type,value,vdate,vtime,method,sComment) SELECT row_number() OVER (), 10, " +
                column + ", vdate, vtime, method, sComment FROM patdat_labs WHERE " + column + ">0");
  }
  convert_straight(database.get());
  mark_as_current(database.get());
  execute(database.get(), "COMMIT");
}

/// The files that both sides share; made at the first use.
struct Files {
  Files(const fs::path& folder, int days)
      : history(folder, days),
        work(folder / ("ladder" + std::to_string(days) + ".das")),
        old(folder / ("old" + std::to_string(days) + ".das")) {}

  void prepare() {
    history.copy_to(work);
    if (!layout.empty()) return;
    key = derived_key(work.string(), database::default_password);
    history.copy_to(old);
    upgrade_ours(work);
    layout = layout_changes(old, work, key);
    history.copy_to(work);
  }

  LongHistory history;
  fs::path work, old;
  std::string key;
  std::vector<std::string> layout;
};

Job ladder_of(const fs::path& folder, int days) {
  const auto files = std::make_shared<Files>(folder, days);
  return {"upgrade ten years from layout 4.0", 1.5, [files] { upgrade_ours(files->work); },
          [files] { upgrade_straight(files->work, files->key, files->layout); }, [files] { files->prepare(); }};
}

}  // namespace

Job ladder_job(const fs::path& folder) { return ladder_of(folder, ten_years); }

GrowthJob ladder_growth_job(const fs::path& folder) {
  return {"upgrade, ten years beside one", ladder_of(folder, ten_years), ladder_of(folder, one_year)};
}

}  // namespace bench
