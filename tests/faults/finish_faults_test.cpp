// The finish of the wizard, interrupted at every point: each thing that it writes exists as a whole or not at all, and
// its report says which.
#include <filesystem>
#include <fstream>

#include "database/environment.h"
#include "support/hive_registry.h"
#include "support/host.h"
#include "tests/faults/database_state.h"
#include "tests/faults/fault_sweep.h"
#include "tests/faults/fault_vfs.h"
#include "tests/faults/faulty_ports.h"
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

using faults::Ended;
using faults::Fault;
namespace fs = std::filesystem;

/// A part of a database that the finish writes, by the name that its report gives it.
struct Part {
  std::string_view name;
  std::vector<std::string_view> tables;
};
const Part parts[] = {
    {"laboratory definitions and preferred insulins",
     {"labdefs", "preferredinsulin", "preferredmedicals", "jet.tables", "jet.fields", "jet.indexes"}},
    {"patient", {"patdat"}},
    {"settings", {"patdat_setup"}},
    {"therapy plan", {"therapieplan", "therapieplan_details"}},
};

class FinishFaults : public WizardTest {
 protected:
  void adapt(Ports& ports) override {
    // The hive is opened again, because the file may have been restored since.
    hive_ = support::open_hive(host(path("hive.reg")));
    registry_.real = hive_.get();
    ports.registry = &registry_;
    ini_.real = std::exchange(ports.ini, &ini_);
    files_.real = std::exchange(ports.files, &files_);
  }

  static std::string host(const std::string& windows_path) {
    return support::host_file_system().host_path(windows_path);
  }
  /// The path of the report, beside the installation.
  std::string report_file() const { return fs::path(host(path("hive.reg"))).parent_path().string() + ".report"; }
  std::string state() const { return faults::database_state(host(database), ::database::default_password); }

  /// Restores exactly the files that were there.
  void restore(const std::map<std::string, std::string>& installation) {
    for (const auto& [name, content] : everything()) {
      if (!installation.contains(name)) fs::remove_all(name);
    }
    for (const auto& [name, content] : installation) {
      if (content == "(folder)")
        fs::create_directories(name);
      else
        std::ofstream(name, std::ios::binary) << content;
    }
  }

  /// Presses the last button, and keeps the report where the test's process finds it. If the last page must show a
  /// fault first, the button is pressed twice.
  bool press_finish() {
    next();
    if (wizard().state() == wizard::frmAssistantFirstSteps::State::Running) next();
    std::ofstream report(report_file());
    for (const auto& entry : wizard().report().entries) {
      report << (entry.written ? "+" : "-") << entry.name << "=" << entry.value << '\n';
      EXPECT_EQ(entry.written, entry.problem.empty());
    }
    return wizard().report().complete();
  }

  std::vector<std::string> report() const {
    std::vector<std::string> lines;
    std::ifstream file(report_file());
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }

  void sweep_over_finish(std::string_view name, const std::function<void()>& walk);
  void learn_states(const faults::Work& work);
  std::string first_state(const faults::Work& work) const;
  void check_database(Ended ended, const std::string& found) const;
  void check_settings(Ended ended) const;
  std::optional<std::string> stored(const std::string& entry) const;

  std::string database = path("patients\\Muster_Max.das");

 private:
  std::unique_ptr<support::Registry> hive_;
  faults::FaultyRegistry registry_;
  faults::FaultyIniFiles ini_;
  faults::FaultyFileSystem files_;
  std::string before_, created_, after_;
  std::map<std::string, std::optional<std::string>> settings_before_, settings_after_;
};

/// The present value of a registry value or ini key of the report ("+BGUnit=1").
std::optional<std::string> FinishFaults::stored(const std::string& entry) const {
  const std::string name = entry.substr(0, entry.find('='));
  if (name.starts_with("[")) {
    const std::size_t end = name.find("] ");
    return support::host_ini_files().value(path("home.ini"), name.substr(1, end - 1), name.substr(end + 2), "", 4096);
  }
  const auto hive = support::open_hive(host(path("hive.reg")));
  for (const std::string_view key : {installation_key, user_key}) {
    for (const std::string_view below : {"", "\\DataEntry"}) {
      const auto found = hive->read(support::RootKey::CurrentUser, std::string(key).append(below), name);
      if (found) return found->text;
    }
  }
  return std::nullopt;
}

/// Records the states of the database before, when it gets its name, and at the end; and of the settings before and at
/// the end.
void FinishFaults::learn_states(const faults::Work& work) {
  EXPECT_TRUE(faults::run_undisturbed(work));
  after_ = state();
  const std::vector<std::string> entries = report();
  for (const std::string& entry : entries) settings_after_[entry.substr(1)] = stored(entry.substr(1));
  work.prepare();
  work.approach();
  for (const std::string& entry : entries) settings_before_[entry.substr(1)] = stored(entry.substr(1));
  before_ = created_ = state();
  if (before_ == "(no file)") created_ = first_state(work);
}

/// The state of the database when it gets its name: at the first point where a process that is killed leaves one.
std::string FinishFaults::first_state(const faults::Work& work) const {
  const auto state_at = [&](int at) {
    EXPECT_EQ(faults::run_with_fault(Fault::Killed, at, work), Ended::Died) << at;
    return state();
  };
  int none = 0, some = 1;
  std::string first = state_at(some);
  for (; first == "(no file)" && !HasFailure(); first = state_at(some)) none = std::exchange(some, 2 * some);
  while (some - none > 1 && !HasFailure()) {
    const int between = none + (some - none) / 2;
    std::string found = state_at(between);
    if (found == "(no file)") {
      none = between;
    } else {
      some = between;
      first = std::move(found);
    }
  }
  return first;
}

void FinishFaults::check_database(Ended ended, const std::string& found) const {
  const std::vector<std::string> lines = report();
  const auto reports = [&](std::string_view mark, std::string_view name) {
    return std::ranges::find(lines, std::string(mark).append(name).append("=")) != lines.end();
  };
  if (found == "(no file)") {
    EXPECT_EQ(before_, found);
    EXPECT_TRUE(ended == Ended::Died || reports("-", "patient database"));
    return;
  }
  EXPECT_FALSE(ended != Ended::Died && reports("-", "patient database"));
  for (const Part& part : parts) {
    std::string old_rows, rows_now, new_rows;
    for (const std::string_view table : part.tables) {
      old_rows += faults::table_state(created_, table);
      rows_now += faults::table_state(found, table);
      new_rows += faults::table_state(after_, table);
    }
    EXPECT_TRUE(rows_now == old_rows || rows_now == new_rows)
        << part.name << " is neither as before nor as it was to be";
    if (ended == Ended::Died) continue;
    if (reports("+", part.name)) {
      EXPECT_TRUE(rows_now == new_rows) << part.name << " is not what the report says";
    }
    if (reports("-", part.name)) {
      EXPECT_TRUE(rows_now == old_rows) << part.name << " has changed although it was not written";
    }
  }
}

void FinishFaults::check_settings(Ended ended) const {
  for (const std::string& line : report()) {
    const std::string entry = line.substr(1);
    if (!settings_after_.contains(entry)) continue;
    const auto found = stored(entry);
    EXPECT_TRUE(found == settings_before_.at(entry) || found == settings_after_.at(entry)) << entry;
    if (ended == Ended::Died) continue;
    EXPECT_EQ(found, line.starts_with("+") ? settings_after_.at(entry) : settings_before_.at(entry)) << entry;
  }
}

void FinishFaults::sweep_over_finish(std::string_view name, const std::function<void()>& walk) {
  const auto installation = everything();
  const auto prepare = [&] {
    restore(installation);
    fs::remove(report_file());
  };
  const auto run = [&] { return press_finish(); };
  const auto check = [&](Ended ended) {
    check_database(ended, state());
    check_settings(ended);
    if (ended == Ended::Died) return;
    for (const auto& [file, content] : everything()) {
      EXPECT_EQ(file.find("ing-"), std::string::npos) << file << " was left behind";
    }
  };
  const faults::Work work{prepare, walk, run, check};
  faults::install_fault_vfs();
  learn_states(work);
  if (!HasFailure()) faults::sweep(name, work);
  fs::remove(report_file());
}

TEST_F(FinishFaults, ANewPatientsFinishTellsWhatItCouldNotWrite) {
  known_database("defs.mdb");
  write("pelmar.ini", "[CHARTS]\nday=1^2\nweek=3^4\n");
  write("home.ini", "[setup]\nhomepage=h\n[h]\nCHART1=0|0|day|1\nCHART2=1|0|week|28\n");
  set_value(support::RootKey::LocalMachine, installation_key, "PatientData", path("patients"));
  sweep_over_finish("a finish with a new patient", [this] {
    start();
    enter_name();
    go_to("pics");
    tick(0, 0);
    go_to("Fertig");
  });
}

TEST_F(FinishFaults, AKnownPatientsFinishTellsWhatItCouldNotWrite) {
  known_database("patients\\Muster_Max.das");
  execute(database, "UPDATE patdat SET phone = '030 1', birthday = #5/6/1950#");
  execute(database,
          "INSERT INTO therapieplan_details (lid, itemtype, itemvalue) SELECT id, 400, 0.9 FROM therapieplan");
  set_value(support::RootKey::LocalMachine, installation_key, "PatientData", path("patients"));
  sweep_over_finish("a finish with a known patient", [this] {
    start("vantrix|Muster_Max.das");
    type("txtCity", "Bonn");
    type("txtvorgabe", "80", 0);
    go_to("Fertig");
  });
}

}  // namespace
}  // namespace wizard::testing
