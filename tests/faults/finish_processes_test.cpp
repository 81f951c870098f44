// Two runs of the wizard finish at the same time, with one folder of patients, one hive and one home page.
#include <unistd.h>

#include "support/hive_registry.h"
#include "support/host.h"
#include "tests/faults/processes.h"
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::StartsWith;

constexpr int finishes = 12;

class FinishProcesses : public WizardTest {
 protected:
  FinishProcesses() {
    write("home.ini", "[setup]\nhomepage=h\n[h]\nCHART1=0|0|day|1\n");
    write("pelmar.ini", "[CHARTS]\nday=1^2\nweek=3^4\n");
    set_value(support::RootKey::LocalMachine, installation_key, "PatientData", path("patients"));
  }

  void adapt(Ports& ports) override {
    hive_ = support::open_hive(support::host_file_system().host_path(path("hive.reg")));
    ports.registry = hive_.get();
  }

  void expect_nothing_left_behind() const {
    for (const auto& [file, content] : everything()) EXPECT_EQ(file.find("ing-"), std::string::npos) << file;
  }

 private:
  std::unique_ptr<support::Registry> hive_;
};

TEST_F(FinishProcesses, OfAKnownPatientBothWriteEverything) {
  const std::string database = known_database("patients\\known.das");
  const auto items = [&] {
    return rows(database, "SELECT COUNT(*) FROM therapieplan_details GROUP BY lid ORDER BY lid");
  };
  const std::vector<std::string> items_of_first_plan = items();
  faults::run_together(2, [&](int process) {
    for (int round = 0; round < finishes; ++round) {
      start("vantrix|known.das");
      type("txtCity", "Stadt " + std::to_string(process));
      type("txtvorgabe", std::to_string(80 + 2 * round + process), 0);
      choose("optBGUnit", 0);
      finish();
      if (!wizard().report().complete()) return 1;
    }
    return 0;
  });
  EXPECT_THAT(rows(database, "SELECT city FROM patdat"), Each(StartsWith("Stadt ")));
  EXPECT_EQ(rows(database, "SELECT COUNT(*) FROM patdat"), std::vector<std::string>{"1"});
  EXPECT_EQ(rows(database, "SELECT COUNT(*) FROM patdat_setup"), std::vector<std::string>{"1"});
  EXPECT_THAT(items(), Each(items_of_first_plan.at(0))) << "every plan has all its items";
  expect_nothing_left_behind();
}

TEST_F(FinishProcesses, OfOneNewPatientEachThatReportsADatabaseHasOne) {
  for (int round = 0; round < finishes; ++round) {
    const std::string name = "Neu" + std::to_string(round);
    faults::run_together(2, [&](int process) {
      // A second database gets a name without a folder.
      const std::string own_folder = support::host_file_system().host_path(path("run" + std::to_string(process)));
      support::host_file_system().create_folder(path("run" + std::to_string(process)));
      if (chdir(own_folder.c_str()) != 0) return 1;
      start();
      enter_name("Max", name);
      finish();
      const auto entries = lines(wizard().report());
      const bool refused = std::ranges::any_of(
          entries, [](const std::string& line) { return line.starts_with("patient database (error 3204"); });
      return refused || wizard().report().complete() ? 0 : 1;
    });
    const std::string database = path("patients\\" + name + "_Max.das");
    EXPECT_EQ(rows(database, "SELECT name FROM patdat"), std::vector<std::string>{name});
    EXPECT_EQ(rows(database, "SELECT COUNT(*) FROM therapieplan"), std::vector<std::string>{"1"});
  }
  const auto hive = support::open_hive(support::host_file_system().host_path(path("hive.reg")));
  for (const std::string_view value : {"BGUnit", "RunOnStart", "ShowOutlookbar", "FirstRun"}) {
    EXPECT_TRUE(hive->read(support::RootKey::CurrentUser, user_key, value)) << value;
  }
  expect_nothing_left_behind();
}

TEST_F(FinishProcesses, KeepTheSettingsOfBoth) {
  constexpr int settings = 100;
  faults::run_together(2, [&](int process) {
    const auto hive = support::open_hive(support::host_file_system().host_path(path("hive.reg")));
    for (int n = 0; n < settings; ++n) {
      const std::string name = "v" + std::to_string(process) + "-" + std::to_string(n);
      if (!support::WriteRegString(*hive, support::RootKey::CurrentUser, user_key, name, "x")) return 1;
      if (!support::host_ini_files().write(path("home.ini"), "both", name, "x")) return 2;
    }
    return 0;
  });
  const auto hive = support::open_hive(support::host_file_system().host_path(path("hive.reg")));
  for (int n = 0; n < 2 * settings; ++n) {
    const std::string name = "v" + std::to_string(n % 2) + "-" + std::to_string(n / 2);
    EXPECT_TRUE(hive->read(support::RootKey::CurrentUser, user_key, name)) << name;
    EXPECT_EQ(support::host_ini_files().value(path("home.ini"), "both", name, "", 9), "x") << name;
  }
}

}  // namespace
}  // namespace wizard::testing
