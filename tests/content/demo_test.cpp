// The demo installation as the build assembled it: every name in it must lead somewhere.
#include <gmock/gmock.h>

#include <filesystem>

#include "apps/firststeps_batch/walk.h"
#include "database/creation/create_database.h"
#include "database/open_database.h"
#include "database/patient.h"
#include "database/table_procedures.h"
#include "support/encoding.h"
#include "support/host.h"
#include "support/ini.h"
#include "support/text.h"
#include "tests/content/text_tables.h"
#include "wizard/form_layout.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::Gt;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Le;
using testing::SizeIs;

constexpr std::size_t buffer = 4096;

std::string demo_path(const std::string& name) {
  return support::host_file_system().windows_path(BUILD_DIR "/demo") + "\\" + name;
}

std::string value(const std::string& file, std::string_view section, std::string_view key) {
  return support::host_ini_files().value(demo_path(file), section, key, "", buffer);
}

std::vector<std::string> pieces(const std::string& text, std::string_view delimiter) {
  std::vector<std::string> result;
  support::Split(text, result, delimiter);
  return result;
}

std::vector<std::string> keys(const std::string& file, std::string_view section) {
  return pieces(support::host_ini_files().keys(demo_path(file), section, "", buffer), std::string_view("\0", 1));
}

/// "800x528" of a JPEG file; empty if it is none.
std::string jpeg_size(const std::string& path) {
  const std::string bytes = support::host_file_system().read(path, 1 << 20).value_or("");
  const auto number = [&bytes](std::size_t place) {
    return static_cast<unsigned char>(bytes.at(place)) * 256 + static_cast<unsigned char>(bytes.at(place + 1));
  };
  if (!bytes.starts_with("\xFF\xD8")) return {};
  for (std::size_t place = 2; place + 9 < bytes.size(); place += 2 + static_cast<std::size_t>(number(place + 2))) {
    if (number(place) == 0xFFC0 || number(place) == 0xFFC2)
      return std::to_string(number(place + 7)) + "x" + std::to_string(number(place + 5));
  }
  return {};
}

database::Environment environment(const support::LanguageComponent* language = nullptr) {
  database::Environment result;
  result.files = &support::host_file_system();
  result.language = language;
  return result;
}

std::vector<std::string> rows(engine::Database& database, std::string_view sql) {
  std::vector<std::string> result;
  const auto records = database.open_recordset(sql);
  for (; !records->eof(); records->move_next()) {
    std::string row;
    for (std::int32_t i = 0; i < records->field_count(); ++i) row += engine::to_text(records->value(i)) + "|";
    result.push_back(row);
  }
  return result;
}

struct Opened {
  std::unique_ptr<engine::Engine> engine;
  std::unique_ptr<engine::Database> database;
  explicit Opened(const std::string& name, bool read_only = true) {
    database::OpenPatientDatabase(environment(), demo_path(name), read_only, false, engine, database);
  }
};

TEST(Demo, KeepsItsTextsInTheCodePageOfTheProgram) {
  for (const char* name : {"vantrix.ini", "setup.ini", "pelmar.ini", "home.ini", "schemes.txt", "answers.ini",
                           "registry.reg", "user\\diary.tb", "user\\main.mnu"}) {
    const std::string bytes = support::host_file_system().read(demo_path(name), 1 << 16).value_or("");
    EXPECT_THAT(bytes, HasSubstr("\r\n")) << name;
    EXPECT_TRUE(support::is_utf8(bytes) == (bytes.find_first_of("\xE4\xF6\xFC\xDF\xDC") == std::string::npos)) << name;
  }
  EXPECT_EQ(value("home.ini", "setup", "homepage"), "Übersicht");
}

TEST(Demo, IsAStandardEditionWithoutADatabase) {
  EXPECT_EQ(value("vantrix.ini", "setup", "RegPath"), "vantrix");
  EXPECT_EQ(value("setup.ini", "setup", "CurrentDB"), "");
  EXPECT_EQ(value("pelmar.ini", "setup", "display"), "");
  const auto registry = support::host_registry(BUILD_DIR "/demo/registry.reg");
  std::string language;
  EXPECT_TRUE(support::ReadRegValue(*registry, support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\vantrix",
                                    "LanguageDLL", language));
  EXPECT_EQ(language, "de");
}

TEST(Demo, GivesEachChartItsTextsAndPictures) {
  const content::Texts texts = content::texts("de");
  const std::vector<std::string> charts = keys("pelmar.ini", "CHARTS");
  EXPECT_THAT(charts, SizeIs(Gt(7u)));
  for (const std::string& chart : charts) {
    const auto fields = pieces(value("pelmar.ini", "CHARTS", chart), "^");
    ASSERT_THAT(fields, SizeIs(2)) << chart;
    for (const std::string& field : fields) EXPECT_TRUE(texts.contains(std::stol(field))) << chart;
    EXPECT_EQ(jpeg_size(demo_path("pics\\ss_" + chart + ".jpg")), "800x528") << chart;
    EXPECT_EQ(jpeg_size(demo_path("pics\\thmb_ss_" + chart + ".jpg")), "240x158") << chart;
  }
}

TEST(Demo, PutsOnlyKnownChartsOnTheHomePage) {
  const std::vector<std::string> charts = keys("pelmar.ini", "CHARTS");
  int shown = 0;
  for (int slot = 1; slot <= 5; ++slot) {
    const auto fields =
        pieces(value("home.ini", value("home.ini", "setup", "homepage"), "CHART" + std::to_string(slot)), "|");
    if (fields.empty()) continue;
    ASSERT_THAT(fields, SizeIs(Gt(2u))) << slot;
    EXPECT_THAT(charts, Contains(fields[2])) << slot;
    ++shown;
  }
  EXPECT_THAT(shown, AllOf(Gt(0), Le(4)));
}

TEST(Demo, DescribesEachSchemeWithinTheBuffer) {
  std::vector<std::string> schemes;
  EXPECT_GT(
      support::GetSchemes(support::host_ini_files(), support::host_file_system(), demo_path("schemes.txt"), schemes),
      3);
  for (const std::string& scheme : schemes) {
    if (scheme.empty()) continue;
    EXPECT_NE(value("schemes.txt", scheme, "Desc"), "") << scheme;
    const std::string description = value("schemes.txt", scheme, "LongDesc");
    EXPECT_THAT(description, HasSubstr("\\n")) << scheme;
    EXPECT_LE(support::character_count(description), 512u) << scheme;
  }
}

TEST(Demo, AnswersOnlyControlsThatTheFormHas) {
  form::Form form;
  wizard::build_form(form);
  const auto answers = firststeps_batch::read_answers(BUILD_DIR "/demo/answers.ini");
  EXPECT_THAT(answers.pages, SizeIs(Gt(5u)));
  EXPECT_NO_THROW(firststeps_batch::check_names(form, answers));
}

TEST(Demo, LooksUpTheDefinitionsThatANewDatabaseHas) {
  const auto german = support::open_text_table(support::host_file_system().windows_path(BUILD_DIR "/demo"), "de");
  ASSERT_TRUE(german);
  const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "labdefs.das";
  std::filesystem::remove(file);
  const auto engine = engine::open_engine("DAO.DBEngine.36");
  const auto fresh = engine->create_database(support::host_file_system().windows_path(file.string()),
                                             engine::locale_general, engine::version_30);
  database::create_table(environment(german.get()), *fresh, "labdefs");
  const Opened lookup("defs.mdb");
  ASSERT_TRUE(lookup.database);
  constexpr auto definitions =
      "SELECT type, field, LongDesc, BDTKey, unit, units_allowed, displayunit, rangefrom, rangeuntil, "
      "criticalThreshold FROM labdefs ORDER BY ID";
  EXPECT_THAT(rows(*lookup.database, definitions), SizeIs(15));
  EXPECT_EQ(rows(*lookup.database, definitions), rows(*fresh, definitions));
  fresh->close();
  std::filesystem::remove(file);
}

TEST(Demo, LooksUpInsulinsForEverySlotAndMedicines) {
  std::vector<database::PreferredInsulin> insulins;
  EXPECT_GE(database::db_GetPreferredInsulin(environment(), demo_path("defs.mdb"), insulins), 12);
  std::vector<std::string> kinds;
  for (const auto& insulin : insulins) {
    kinds.push_back(std::string(insulin.rapid ? "rapid " : "") + (insulin.bolusie > 0 ? "bolus " : "") +
                    (insulin.basalie > 0 ? "basal" : ""));
    EXPECT_EQ(insulin.bolusie + insulin.basalie, 100) << insulin.desc;
  }
  EXPECT_THAT(kinds, IsSupersetOf({"bolus ", "basal", "bolus basal", "rapid bolus "}));
  const Opened lookup("defs.mdb");
  ASSERT_TRUE(lookup.database);
  EXPECT_THAT(rows(*lookup.database, "SELECT [desc] FROM preferredMedicals WHERE [desc] <> ''"), SizeIs(Gt(5u)));
}

TEST(Demo, LetsTheMetersBeAssignedAndReleased) {
  const auto copy = std::filesystem::path(testing::TempDir()) / "meters.mdb";
  std::filesystem::copy_file(BUILD_DIR "/demo/data/meters.mdb", copy,
                             std::filesystem::copy_options::overwrite_existing);
  const auto engine = engine::open_engine("DAO.DBEngine.36");
  const auto meters = engine->open_database(support::host_file_system().windows_path(copy.string()), false, false, "");
  EXPECT_THAT(rows(*meters, "SELECT assignedto FROM meters"), AllOf(SizeIs(Gt(1u)), Each("0|")));
  meters->execute("UPDATE meters SET assignedto=7 WHERE id=1");
  meters->execute("UPDATE meters set name='M', firstname='J' WHERE assignedto=7");
  meters->execute("UPDATE meters set name='', firstname='', assignedto=0 WHERE assignedto=7");
  EXPECT_EQ(meters->records_affected(), 1);
  meters->close();
  std::filesystem::remove(copy);
}

}  // namespace
