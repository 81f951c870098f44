#include <gmock/gmock.h>

#include <sstream>

#include "apps/patientdb/patientdb.h"
#include "database/creation/create_database.h"
#include "database/engine/choice/engine_choice.h"
#include "database/open_database.h"
#include "database/patient.h"
#include "database/schema/schema.h"
#include "database/version_record.h"
#include "tests/automation/registration.h"
#include "tests/automation/server_library.h"
#include "tests/engine/test_database.h"

namespace automation_test {
namespace {

using engine::test::error_number;
using testing::HasSubstr;
using testing::StartsWith;

class Choice : public engine::test::EngineTest {
 protected:
  bool is_jet_file(std::string_view name) const { return content(name).substr(4).starts_with("Standard Jet DB"); }
  /// Opens the file as the programs do.
  std::unique_ptr<engine::Database> open_by_choice(std::string_view name, bool newest_engine_only = false) {
    return database::create_engine({}, newest_engine_only)->open_database(path(name), false, false, "");
  }
  void make(std::string_view name) {
    const auto engine = database::create_engine({}, false);
    add_things(*engine->create_database(path(name), engine::locale_general, engine::version_30));
  }
};

TEST_F(Choice, IsTheAutomationEngineForNewFilesAndTheWriterForOldOnes) {
  make("embedded.das");
  EXPECT_FALSE(is_jet_file("embedded.das"));
  for (const std::vector<std::string>& registered :
       {std::vector<std::string>{newer_engine, older_engine}, std::vector<std::string>{older_engine}}) {
    const Registration registration(registered);
    const std::string name = registered.front() + ".das";
    make(name);
    EXPECT_TRUE(is_jet_file(name));
    EXPECT_EQ(open_by_choice(name)->table_defs().count(), 1);
    EXPECT_EQ(open_by_choice("embedded.das")->table_defs().count(), 1);
  }
}

TEST_F(Choice, OfTheNewestEngineOnlyTakesNoOlderOne) {
  {
    const Registration registration({older_engine});
    make("jet.das");
    EXPECT_EQ(error_number([&] { open_by_choice("jet.das", true); }), 429);
  }
  const Registration registration({newer_engine});
  EXPECT_EQ(error_number([&] { open_by_choice("jet.das", true); }), 0);
}

TEST_F(Choice, LeavesAJetFileAloneWhereItsEngineIsGone) {
  {
    const Registration registration({newer_engine});
    make("jet.das");
  }
  const std::string before = content("jet.das");
  try {
    open_by_choice("jet.das");
    ADD_FAILURE() << "nothing can open it";
  } catch (const support::RuntimeError& error) {
    EXPECT_EQ(error.number(), 3343);
    EXPECT_THAT(error.what(), HasSubstr(newer_engine));
  }
  EXPECT_EQ(error_number([&] { make("jet.das"); }), 3204);
  EXPECT_EQ(content("jet.das"), before);
}

TEST_F(Choice, OfAnObjectThatIsRegisteredButBrokenIsTheEmbeddedEngine) {
  const Registration registration({newer_engine}, L"C:\\missing.dll");
  make("new.das");
  EXPECT_FALSE(is_jet_file("new.das"));
}

/// The whole life of a patient's file, through the automation objects.
class StrictChoice : public Choice, public testing::WithParamInterface<bool> {
 protected:
  StrictChoice() { set_strict(GetParam()); }
  ~StrictChoice() override { set_strict(false); }
};
INSTANTIATE_TEST_SUITE_P(Objects, StrictChoice, testing::Bool(),
                         [](const auto& row) { return row.param ? "Strict" : "AsDocumented"; });

TEST_P(StrictChoice, MakesAPatientDatabaseThroughAutomation) {
  const Registration registration({newer_engine});
  const long before = living_objects();
  database::Environment environment;
  environment.password = "geheim";
  EXPECT_EQ(database::CreatePatientDatabase(environment, path("patient.das"), {}, {}), 1);
  EXPECT_TRUE(is_jet_file("patient.das"));
  {
    const auto engine = database::create_engine(environment, false);
    const auto patient = engine->open_database(path("patient.das"), false, true, "MS Access;pwd=geheim");
    EXPECT_EQ(patient->table_defs().count(), std::ssize(database::schema::tables()));
    EXPECT_EQ(engine::test::column(*patient, "SELECT MinVersion FROM db_info", "MinVersion"),
              std::vector<std::string>{std::to_string(database::current_minor_version)});
  }
  EXPECT_EQ(living_objects(), before);
}

/// The console tool's error message; "" if it succeeds.
std::string complaint_of_tool(std::vector<std::string> arguments) {
  std::ostringstream out, err;
  console::Console console{out, err, [](std::string_view) -> std::optional<std::string> { return ""; }, ""};
  patientdb::run(arguments, console);
  return err.str();
}

TEST_P(StrictChoice, UpgradesAPatientDatabaseThroughAutomationAfterACopy) {
  const Registration registration({newer_engine});
  const std::string file = path("old.das");
  EXPECT_EQ(complaint_of_tool({"create", file, "--name", "M", "--firstname", "J"}), "");
  EXPECT_EQ(complaint_of_tool(
                {"sql", file, "UPDATE db_info SET MinVersion = 40", "ALTER TABLE insulinpump DROP COLUMN importid"}),
            "");
  EXPECT_EQ(complaint_of_tool({"upgrade", file, "--yes"}), "");
  EXPECT_TRUE(is_jet_file("old.das") && is_jet_file("old.4.40.das"));
  const auto upgraded = open_by_choice("old.das");
  EXPECT_EQ(engine::test::column(*upgraded, "db_info", "MinVersion"),
            std::vector<std::string>{std::to_string(database::current_minor_version)});
  EXPECT_EQ(error_number([&] { upgraded->table_defs().item("insulinpump")->fields().item("importid"); }), 0);
}

TEST_F(Choice, OfOneProgramIsOneObject) {
  const Registration registration({newer_engine});
  const std::size_t start = released_objects().size();
  const auto released_engines = [start] {
    const std::wstring released = released_objects().substr(start);
    std::size_t count = 0;
    for (std::size_t place = 0; (place = released.find(L"DBEngine", place)) != std::wstring::npos; ++place) ++count;
    return count;
  };
  {
    const auto shared = engine::share_automation_objects();
    make("one.das");
    make("two.das");
    EXPECT_EQ(released_engines(), 0U);
  }
  EXPECT_EQ(released_engines(), 1U) << "of both";
  make("three.das");
  EXPECT_EQ(released_engines(), 2U) << "without it each has its own";
}

TEST_F(Choice, IsTheUsersWhereTheToolIsToldOf) {
  const Registration registration({newer_engine});
  const auto tool = [&](std::string_view command, std::string_view name, const char* engine) {
    std::vector<std::string> arguments{std::string(command), path(name), "--engine", engine};
    if (command == "create") arguments.emplace_back("--empty");
    return complaint_of_tool(arguments);
  };
  EXPECT_EQ(tool("create", "auto.das", "auto"), "");
  EXPECT_EQ(tool("create", "jet.das", "automation"), "");
  EXPECT_EQ(tool("create", "ours.das", "embedded"), "");
  EXPECT_TRUE(is_jet_file("auto.das") && is_jet_file("jet.das") && !is_jet_file("ours.das"));
  EXPECT_EQ(tool("schema", "jet.das", "auto") + tool("schema", "ours.das", "auto"), "");
  EXPECT_EQ(tool("schema", "jet.das", "automation") + tool("schema", "ours.das", "embedded"), "");
  EXPECT_THAT(tool("schema", "jet.das", "embedded"), StartsWith("error 3343: "));
  EXPECT_THAT(tool("schema", "ours.das", "automation"), StartsWith("error 3343: "));
}

}  // namespace
}  // namespace automation_test
