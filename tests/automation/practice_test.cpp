#include <gmock/gmock.h>
#include <windows.h>
// shlwapi.h needs windows.h before it.
#include <shlwapi.h>

#include <sstream>

#include "apps/firststeps_batch/firststeps_batch.h"
#include "support/file_system.h"
#include "support/win32/wide.h"
#include "tests/automation/registration.h"
#include "tests/automation/server_library.h"
#include "tests/engine/test_database.h"

namespace automation_test {
namespace {

using testing::HasSubstr;

/// A computer of a practice: the registry leads to an installation in another folder than the program's.
class Practice : public engine::test::EngineTest {
 protected:
  Practice() {
    std::filesystem::create_directories(host_path("program"));
    std::filesystem::create_directories(host_path("diary"));
    write("program/vantrix.ini", "[setup]\r\nRegPath=" + name_ + "\r\n");
    write("answers.ini", "[PatDat]\ntxtFirstName=Jörg\ntxtName=Müller\n[Maßeinheit]\noptBGUnit=1\n");
    set_value("Path", path("diary"));
    set_value("PATIENTDATA", path("patients"));
    set_value("LanguageDLL", "Probe");
  }
  ~Practice() override {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) SHDeleteKeyW(root, key().c_str());
  }

  /// The program's exit code and its output.
  std::pair<int, std::string> run_batch(std::vector<std::string> arguments) const {
    std::ostringstream out, err;
    const std::string program = path("program");
    console::Console console{out, err, [](std::string_view) { return std::nullopt; }, program};
    arguments.insert(arguments.end(), {"--answers", path("answers.ini")});
    const int code = firststeps_batch::run(arguments, console);
    return {code, out.str() + err.str()};
  }
  bool has_patient() const {
    return support::host_file_system().file_size(path("patients") + "\\Müller_Jörg.das").has_value();
  }
  std::wstring user_value(const wchar_t* name) const {
    wchar_t text[256] = {};
    DWORD size = sizeof text;
    const std::wstring configuration = key() + L"\\Profiles\\default\\User Configuration";
    RegGetValueW(HKEY_CURRENT_USER, configuration.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
  }

 private:
  std::wstring key() const { return L"SOFTWARE\\Lumoraquant\\" + support::wide(name_); }
  void set_value(const std::string& name, const std::string& text) const {
    const std::wstring units = support::wide(text);
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key().c_str(), support::wide(name).c_str(), REG_SZ, units.c_str(),
                    static_cast<DWORD>((units.size() + 1) * sizeof(wchar_t)));
  }

  std::string name_ = "FirstStepsTest" + std::to_string(GetCurrentProcessId());
};

TEST_F(Practice, IsConfiguredWithoutAWindowWhereItsRegistryLeads) {
  const Registration registration({language_class});
  const long before = living_objects();
  const auto [rehearsed, would_be] = run_batch({"--dry-run"});
  EXPECT_EQ(rehearsed, 0) << would_be;
  EXPECT_EQ(user_value(L"BGUnit"), L"") << "a dry run writes nothing";
  EXPECT_FALSE(has_patient());

  const auto [code, written] = run_batch({});
  ASSERT_EQ(code, 0) << written;
  EXPECT_EQ(user_value(L"BGUnit"), L"1") << written;
  EXPECT_TRUE(has_patient());
  EXPECT_EQ(living_objects(), before) << "the language component is released with the form";
  EXPECT_THAT(released_objects(), HasSubstr(L"Language "));
}

TEST_F(Practice, RefusesAnswersBeforeItsRegistryIsTouched) {
  write("answers.ini", "[PatDat]\ntxtName=Müller\n");
  const auto [code, said] = run_batch({});
  EXPECT_EQ(code, 3) << said;
  EXPECT_EQ(user_value(L"BGUnit"), L"");
}

}  // namespace
}  // namespace automation_test
