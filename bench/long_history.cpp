#include "bench/long_history.h"

#include <fstream>
#include <stdexcept>

#include "bench/patient_file.h"
#include "bench/straight.h"
#include "database/open_database.h"

namespace bench {
namespace {

/// Runs the statements of the layout's script; each ends with ";" at the end of a line.
void create_layout(engine::Database& database) {
  std::ifstream script(LAYOUTS_DIR "/4.0.sql");
  if (!script) throw std::runtime_error("no script of layout 4.0 in " LAYOUTS_DIR);
  std::string statement;
  engine::Transaction transaction{database};
  for (std::string line; std::getline(script, line);) {
    if (line.empty() || line.starts_with("--")) continue;
    statement += line + "\n";
    if (line.back() != ';') continue;
    database.execute(statement);
    statement.clear();
  }
  transaction.commit();
}

struct Rows {
  double a_day;
  const char* sql;  ///< n counts from 0; 40000 is first_day
};

constexpr Rows rows[] = {
    {288, R"(INSERT INTO glucose(ID,vDate,vTime,Value,Event,Method,Comment) SELECT n+1, 40000+n/288, n%288/288.0,
             70+n*37%180, n%30, n%3, CASE WHEN n%50=0 THEN 'nach dem Sport' END FROM counted)"},
    {24,
     R"(INSERT INTO insulinpump(ID,vDate,vTime,Amount,Type,Profile,Temp,"desc",Event,Comment) SELECT n+1, 40000+n/24,
            n%24/24.0, 0.3+n*7%13/10.0, 1, 1, 0, '60', 0, CASE WHEN n%97=0 THEN 'calc' ELSE 'Profil 1' END FROM counted)"},
    {17, R"(INSERT INTO insulinpump(ID,vDate,vTime,Amount,Type,Event) SELECT n+1+(SELECT max(ID) FROM insulinpump),
            40000+n/17, (n%17*80+37)/1440.0, 1+n*11%60/10.0, 2+n%2, 110 FROM counted)"},
    {8, R"(INSERT INTO insulin(ID,vDate,vTime,BolusIE,BasalIE,"desc",Event,Method,Rapid) SELECT n+1, 40000+n/8, n%8/8.0,
           n%14/2.0, 0, 'Insulin', n%30, 0, -1 FROM counted)"},
    {4, R"(INSERT INTO intakes(ID,vDate,vTime,Value,Event,Method) SELECT n+1, 40000+n/4, n%4/4.0, n%9/2.0, n%30, 0
           FROM counted)"},
    {0.5, "INSERT INTO activities(ID,vDate,vTime,value,Event) SELECT n+1, 40000+n, 0.5, n%90, n%30 FROM counted"},
    {0.5, "INSERT INTO medicaldata(ID,vDate,vTime,value,Event) SELECT n+1, 40000+n, 0.5, 850, n%30 FROM counted"},
    {0.5, "INSERT INTO pressure(ID,vDate,vTime,BPSYS,BPDIA) SELECT n+1, 40000+n, 0.5, 120+n%30, 80 FROM counted"},
    {0.5, "INSERT INTO day_info(vDate,iWeight) SELECT 40000+n, 78+n%7 FROM counted"},
    {0.5, R"(INSERT INTO patdat_labs(ID,vdate,dHbA,dHbAc,iChol,sComment) SELECT n+1, 40000+n, -1, 6+n%20/10.0,
             180+n%40, 'Quartal' FROM counted)"},
    {0.5, R"(INSERT INTO preferredInsulin(ID,BolusIE,BasalIE,"desc",manufacturer) SELECT n+1, 1, 0, 'Insulin '||n,
             'Firma '||n%40 FROM counted)"},
};

void fill(sqlite3* database, int days) {
  execute(database, "BEGIN");
  for (const char* table : {"glucose", "insulinpump", "insulin", "intakes", "activities", "medicaldata", "pressure",
                            "day_info", "patdat_labs", "preferredInsulin"}) {
    execute(database, std::string("DELETE FROM ") + table);
  }
  for (const Rows& table : rows) {
    const std::string last = std::to_string(static_cast<int>(table.a_day * days) - 1);
    execute(database, "WITH RECURSIVE counted(n) AS (SELECT 0 UNION ALL SELECT n+1 FROM counted WHERE n<" + last +
                          ") " + table.sql);
  }
  execute(database, "COMMIT");
}

}  // namespace

LongHistory::LongHistory(std::filesystem::path folder, int days)
    : folder_(std::move(folder)), file_(folder_ / ("history" + std::to_string(days) + ".das")), days_(days) {}

void LongHistory::create() const {
  {
    const auto engine = database::create_engine({}, false);
    const auto database = engine->create_database(windows_path(file_), engine::locale_general, engine::version_30);
    create_layout(*database);
    database->new_password("", database::default_password);
  }
  const StraightDatabase database =
      open_straight(file_.string(), derived_key(file_.string(), database::default_password));
  fill(database.get(), days_);
}

void LongHistory::copy_to(const std::filesystem::path& target) {
  if (!std::filesystem::exists(file_)) create();
  std::filesystem::copy_file(file_, target, std::filesystem::copy_options::overwrite_existing);
}

database::Environment willing_environment() {
  database::Environment environment;
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
  return environment;
}

}  // namespace bench
