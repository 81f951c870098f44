// What the user is told about a finish that could not write everything.
#include "wizard/finish_report.h"

#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

using What = FinishReport::What;

std::vector<std::string> told(const FinishReport& report) {
  std::vector<std::string> lines;
  for (const FinishProblem& problem : finish_problems(InstallationConfig{}, report))
    lines.push_back(problem.what + ": " + problem.reason.substr(0, problem.reason.find_first_of(",.")));
  return lines;
}

TEST(FinishProblems, NameWhatIsMissingAndWhyInTheUsersLanguage) {
  struct Case {
    FinishReport::Entry entry;
    const char* told;
  };
  for (const Case& row : {
           Case{{What::RegistryValue, "HKEY", "BGUnit", "1", false, "x", 0, reason_text::registry_refuses},
                "Einstellung „BGUnit“: Windows hat den Eintrag in der Registrierung nicht angenommen"},
           Case{{What::RegistryValue, "HKEY", "PATIENTDATA", "Ş", false, "x", 0, reason_text::text_does_not_fit},
                "Einstellung „PATIENTDATA“: Name oder Ordner enthält Zeichen"},
           Case{{What::File, "a.das", "patient database", "", false, "x", 3043},
                "Die neue Patientendatenbank: Der Datenträger ist voll oder fehlerhaft"},
           Case{{What::File, "a.das", "therapy plan", "", false, "x", 3045},
                "Der Therapieplan: Ein anderes Programm benutzt die Datei gerade"},
           Case{{What::File, "a.das", "settings", "", false, "x", 4711}, "Ihre Zielwerte und Einstellungen: Warum"},
           Case{{What::File, "a.xyz", "something new", "", false, "x", 0}, "Datei a.xyz: Warum"},
           Case{{What::IniKey, "home.ini", "[h] CHART1", "0|0|day", false, "x", 75},
                "Startseite (home.ini): Datei oder Ordner ist schreibgeschützt oder nicht erreichbar"},
           Case{{What::RecycledFile, "user\\a.tb", "", "", false, "x", 0, reason_text::not_recycled},
                "Alte Symbolleiste „a.tb“: Die Datei liegt noch an ihrem Platz und nicht im Papierkorb"},
       }) {
    EXPECT_THAT(told({{row.entry}}), ElementsAre(row.told)) << row.entry.name;
  }
  EXPECT_THAT(told({{{What::File, "a.das", "patient", "", true, ""}}}), IsEmpty()) << "it was written";
}

TEST(FinishProblems, TellTheSameOnceAndKeepEveryTechnicalLine) {
  const FinishReport report{{{What::IniKey, "home.ini", "[h] CHART1", "a", false, "error 75: x", 75},
                             {What::File, "a.das", "patient", "", false, "error 3043: y", 3043},
                             {What::IniKey, "home.ini", "[h] CHART2", "b", false, "error 75: x", 75}}};
  const auto problems = finish_problems(InstallationConfig{}, report);
  ASSERT_EQ(problems.size(), 2U);
  EXPECT_EQ(problems[0].technical, "home.ini, [h] CHART1 = a: error 75: x\r\nhome.ini, [h] CHART2 = b: error 75: x");
  EXPECT_EQ(problems[1].technical, "a.das, patient: error 3043: y");
}

TEST(WrittenText, TellsTheSameOnceWithAllPlacesThatHoldIt) {
  const FinishReport report{{{What::RegistryValue, "HKEY\\User", "BGUnit", "1", true, ""},
                             {What::File, "a.das", "patient", "", true, ""},
                             {What::File, "a.das", "settings", "", true, ""},
                             {What::RegistryValue, "HKEY\\Maker", "FirstRun", "0", true, ""},
                             {What::RegistryValue, "HKEY\\Lost", "User", "", false, "x"},
                             {What::File, "b.das", "patient", "", true, ""},
                             {What::RegistryValue, "HKEY\\User", "RunOnStart", "mnu_home", true, ""}}};
  EXPECT_EQ(written_text(InstallationConfig{}, report),
            "Einstellungen des Programms\r\n    HKEY\\User\r\n    HKEY\\Maker\r\n"
            "Ihre Angaben zur Person\r\nIhre Zielwerte und Einstellungen\r\n    a.das\r\n"
            "Ihre Angaben zur Person\r\n    b.das\r\n");
}

/// A registry that nobody may write.
class ReadOnlyRegistry : public support::Registry {
 public:
  bool key_exists(support::RootKey, std::string_view) const override { return true; }
  std::optional<support::RegistryValue> read(support::RootKey, std::string_view, std::string_view) const override {
    return std::nullopt;
  }
  CreateResult create_key(support::RootKey, std::string_view, std::string_view) override {
    return CreateResult::Failed;
  }
  bool write_text(support::RootKey, std::string_view, std::string_view, std::string_view) override { return false; }
  bool can_write(support::RootKey, std::string_view) const override { return false; }
};

class FinishWithoutRegistry : public WizardTest {
 protected:
  void adapt(Ports& ports) override { ports.registry = &read_only_; }

 private:
  ReadOnlyRegistry read_only_;
};

TEST_F(FinishWithoutRegistry, TellsARegistryThatRefusesFromATextThatItCannotHold) {
  start();
  enter_name();
  finish();
  EXPECT_THAT(lines(wizard().report()), ::testing::Contains("BGUnit=0 (the registry cannot be written)"));
  EXPECT_THAT(
      told(wizard().report()),
      ::testing::Contains("Einstellung „BGUnit“: Windows hat den Eintrag in der Registrierung nicht angenommen"));
}

}  // namespace
}  // namespace wizard::testing
