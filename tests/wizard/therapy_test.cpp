// The therapy pages: kinds of therapy, insulins, the check of the targets, the scheme and the patients' folder.
#include <algorithm>
#include <filesystem>

#include "database/creation/create_database.h"
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

class Therapy : public WizardTest {
 protected:
  std::string visible_slots() {
    std::string slots;
    for (int n = 0; n < 5; ++n) {
      EXPECT_EQ(control("lblInsulin", n).visible(), control("cbInsulin", n).visible());
      if (control("cbInsulin", n).visible()) slots += std::to_string(n);
    }
    return slots;
  }
  std::vector<std::string> offered(std::string_view list, int slot = -1) {
    std::vector<std::string> names;
    for (const auto& item : control(list, slot).items()) names.push_back(item.text);
    return names;
  }
};

TEST_F(Therapy, FourTypesAndFiveTherapiesAreToChooseFrom) {
  start();
  EXPECT_THAT(offered("cbDiabetesTyp"), ElementsAre("T4811", "T4812", "T4813", "T4814"));
  EXPECT_THAT(offered("cbTherapie"), ElementsAre("T4821", "T4822", "T4823", "T4824", "T4825"));
}

TEST_F(Therapy, TheKindDecidesWhichSlotsAndPagesAreOffered) {
  struct Case {
    int kind;
    const char* slots;
    bool insulin_page;
  };
  start();
  EXPECT_EQ(visible_slots(), "01234");
  for (const Case& row : {Case{1, "0123", true}, Case{3, "4", true}, Case{5, "01234", false}, Case{2, "0123", true},
                          Case{4, "0123", true}}) {
    select("cbTherapie", row.kind);
    EXPECT_EQ(visible_slots(), row.slots) << row.kind;
    EXPECT_THAT(wizard().StepNames(), Contains(row.insulin_page ? "Insulin" : "Insulin-"));
    EXPECT_THAT(wizard().StepNames(), Contains("Medikamente"));
  }
}

TEST_F(Therapy, WithoutADatabaseTheLookupDatabaseOffersItsInsulins) {
  // A patient database has the same reference tables as the lookup database.
  const std::string lookup = known_database("defs.mdb");
  execute(lookup, "DELETE FROM preferredInsulin");
  for (const char* row : {"'Actrapid', 100, 0, 0, 2", "'Lantus', 0, 100, 0, 1", "'Mix 30', 30, 70, 0, 1",
                          "'Humalog', 100, 0, -1, 1", "'Nichts', 0, 0, 0, 1"})
    execute(lookup, "INSERT INTO preferredInsulin ([desc], bolusie, basalie, rapid, iSortOrder) VALUES (" +
                        std::string(row) + ")");
  start();
  EXPECT_THAT(offered("cbInsulin", 0), ElementsAre("Actrapid"));
  EXPECT_THAT(offered("cbInsulin", 1), ElementsAre("Lantus"));
  EXPECT_THAT(offered("cbInsulin", 2), ElementsAre("Mix 30"));
  EXPECT_THAT(offered("cbInsulin", 3), ElementsAre("Humalog"));
  EXPECT_THAT(offered("cbInsulin", 4), ElementsAre("Humalog", "Actrapid"));
}

TEST_F(Therapy, AKnownDatabasePresetsThePages) {
  const std::string database = known_database();
  execute(database,
          "INSERT INTO therapieplan_details (lid, itemtype, [desc]) SELECT id, 4, 'Apidra|100|0|0' FROM therapieplan");
  start("vantrix|known.das");
  EXPECT_EQ(text("txtName"), "Muster");
  EXPECT_EQ(control("cbDiabetesTyp").selected_item_data(), 1);
  EXPECT_EQ(control("cbTherapie").selected_item_data(), 2);
  EXPECT_EQ(visible_slots(), "0123");
  EXPECT_EQ(text("cbInsulin", 0), "Novorapid");
  EXPECT_EQ(text("cbInsulin", 1), "") << "a text that only names the kind of insulin is no insulin";
  EXPECT_EQ(text("cbInsulin", 4), "Apidra");
  EXPECT_EQ(text("txtMedik", 0), "Metformin");
}

TEST_F(Therapy, ContradictingTargetsAreRefused) {
  struct Case {
    const char* from;
    const char* until;
    const char* hypo;
    const char* hyper;
    int unit;
    const char* message;  ///< empty: accepted
    int focus;
  };
  for (const Case& row : {
           Case{"70", "150", "50", "170", 0, "", -1},
           Case{"70", "150", "70", "150", 0, "", -1},
           Case{"0", "150", "50", "170", 0, "608", 0},
           Case{"-1", "150", "50", "170", 0, "608", 0},
           Case{"150", "150", "50", "170", 0, "608", 0},
           Case{"70", "150", "0", "170", 0, "609", 2},
           Case{"70", "150", "71", "170", 0, "609", 2},
           Case{"70", "150", "50", "149", 0, "610", 3},
           Case{"70", "", "50", "170", 0, "611", 1},
           Case{"70", "150", "50", "viel", 0, "611", 3},
           Case{"40000", "50000", "50", "60000", 0, "611", 0},
           Case{"3,9", "8,3", "2,8", "9,4", 1, "", -1},
           Case{"3,9", "3,9", "2,8", "9,4", 1, "608", 0},
       }) {
    write("pelmar.ini", "[setup]\ndisplay=Therapie_BZ|Maßeinheit|Fertig\n");
    user.log.clear();
    start();
    choose("optBGUnit", row.unit);
    int n = 0;
    for (const char* target : {row.from, row.until, row.hypo, row.hyper}) type("txtvorgabe", target, n++);
    next();
    const bool accepted = row.message == std::string();
    EXPECT_EQ(wizard().CurrentStep(), accepted ? 1 : 0) << row.from << " " << row.until;
    if (accepted) continue;
    EXPECT_EQ(user.log.back(), "message T" + std::string(row.message) + " 4112 T4650");
    EXPECT_EQ(wizard().form().focus(), &control("txtvorgabe", row.focus));
  }
}

/// A preset in the registry is in whole mg/dl; a user compares what the page shows of it.
TEST_F(Therapy, TargetsAreComparedAsTheyAreShownAndStoredAsTheyWere) {
  struct Case {
    const char* value;  ///< in the registry
    const char* preset;
    const char* shown;
    int preset_field;
    int typed_field;
    const char* typed;
    bool accepted;
    const char* stored;  ///< BGTargetMin|BGTargetMax|BGHypo|BGHyper
  };
  for (const Case& row : {
           Case{"BGTargetUntil", "170", "9,4", 1, 3, "9,4", true, "70|170|50|169"},
           Case{"BGTargetUntil", "170", "9,4", 1, 3, "9,40", true, "70|170|50|169"},
           Case{"BGTargetUntil", "170", "9,4", 1, 3, "9,3", false, ""},
           Case{"BGTargetFrom", "100", "5,6", 0, 2, "5,6", true, "100|150|101|180"},
           Case{"BGTargetFrom", "100", "5,6", 0, 1, "5,6", false, ""},
       }) {
    write("pelmar.ini", "[setup]\ndisplay=Therapie_BZ|PatDat|Fertig\n");
    set_value(support::RootKey::CurrentUser, user_key, "BGUnit", "1");
    const std::string preferences = std::string(installation_key) + "\\PREFERENCES";
    for (const auto& [name, value] : {std::pair{"BGTargetFrom", "70"}, {"BGTargetUntil", "150"}, {"BGHyper", "180"}})
      set_value(support::RootKey::CurrentUser, preferences, name, value);
    set_value(support::RootKey::CurrentUser, preferences, row.value, row.preset);
    start();
    EXPECT_EQ(text("txtvorgabe", row.preset_field), row.shown);
    type("txtvorgabe", row.typed, row.typed_field);
    next();
    EXPECT_EQ(wizard().StepName(), row.accepted ? "PatDat" : "Therapie_BZ") << row.preset << " " << row.typed;
    if (!row.accepted) continue;
    enter_name("Max", "Muster" + std::string(row.typed));
    finish();
    EXPECT_THAT(rows(wizard().config().CurrentDB, "SELECT BGTargetMin, BGTargetMax, BGHypo, BGHyper FROM patdat_setup"),
                ElementsAre(row.stored));
  }
}

TEST_F(Therapy, AFieldWithoutANumberIsNamedWithWhatIsMeant) {
  texts->given = {{611, "%1/%2"}, {621, "%1"}, {622, "sep %1 %2"}, {623, "range %1 %2 %3"}, {4757, "Bereich &bis:"}};
  struct Case {
    int unit;
    const char* typed;
    const char* message;
  };
  for (const Case& row : {
           Case{0, "", "Bereich bis/120"},
           Case{1, " ", "Bereich bis/5,6"},
           Case{0, "viel", "Bereich bis/120"},
           Case{1, "5.6", "Bereich bis/sep , 5,6"},
           Case{0, "150.5", "Bereich bis/sep , 150,5"},
           Case{0, "40000", "Bereich bis/range 1 32767 mg/dl"},
           Case{1, "2000,5", "Bereich bis/range 0,1 1818,7 mmol/l"},
           Case{0, "-40000", "Bereich bis/range 1 32767 mg/dl"},
       }) {
    write("pelmar.ini", "[setup]\ndisplay=Therapie_BZ|Maßeinheit|Fertig\n");
    start();
    choose("optBGUnit", row.unit);
    type("txtvorgabe", row.typed, 1);
    user.log.clear();
    next();
    EXPECT_THAT(user.log, ElementsAre("message " + std::string(row.message) + " 4112 T4650")) << row.typed;
  }
}

class Scheme : public WizardTest {
 protected:
  Scheme() {
    write("schemes.txt",
          "[ICT]\nDesc=Intensivierte Therapie\nLongDesc=  Zeile 1\\nZeile 2 \n[Bare]\n[CSII]\nDesc=Pumpe\n");
  }
};

TEST_F(Scheme, OffersTheSectionsAndSelectsTheStoredOne) {
  set_value(support::RootKey::CurrentUser, installation_key, "Scheme", "2");
  start();
  EXPECT_EQ(text("cbSchema"), "Pumpe");
  EXPECT_EQ(caption("lblSchemaDesc"), "");
  const std::vector<form::ListItem> items{{"Intensivierte Therapie", 0}, {"Bare", 1}, {"Pumpe", 2}};
  EXPECT_EQ(control("cbSchema").items(), items);
  select("cbSchema", 0);
  EXPECT_EQ(caption("lblSchemaDesc"), "Zeile 1\r\nZeile 2");
  control("cbSchema").set_list_index(-1);
  wizard().click("cbSchema");
  EXPECT_EQ(caption("lblSchemaDesc"), "");
}

TEST_F(Scheme, StaysEmptyWithoutItsFile) {
  write("schemes.txt", "");
  start();
  EXPECT_THAT(control("cbSchema").items(), IsEmpty());
  EXPECT_FALSE(control("cbSchema").enabled());
}

TEST_F(Scheme, CutsALongDescriptionAtItsBuffer) {
  write("schemes.txt", "[a]\nLongDesc=" + std::string(900, 'x') + "\n");
  start();
  EXPECT_EQ(caption("lblSchemaDesc"), std::string(512, 'x'));
}

class Folder : public WizardTest {
 protected:
  Folder() {
    set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("local\\"));
    write("local\\index.mdb", "x");
    start("Pro");
    user.log.clear();
  }
};

TEST_F(Folder, IsShownWithItsPlace) {
  EXPECT_EQ(caption("lblFolder"), path("local\\"));
  EXPECT_EQ(caption("lblLocation"), "T4685");
  EXPECT_EQ(control("imgOpen").picture(), control("imgNew").picture());
}

TEST_F(Folder, ACancelledChoiceChangesNothing) {
  wizard().click("cmdPath", 0);
  EXPECT_EQ(wizard().config().PatientData, path("local\\"));
  EXPECT_THAT(user.log, ElementsAre("not topmost", "folder T4801", "topmost"));
}

TEST_F(Folder, ANewDatabaseIsRefusedWhereThereIsOne) {
  write("shared\\index.mdb", "x");
  user.chosen_folder = path("shared");
  wizard().click("cmdPath", 0);
  EXPECT_THAT(user.log, ElementsAre("not topmost", "folder T4801", "message T2400 65552 T4650", "topmost"));
  EXPECT_EQ(wizard().config().PatientData, path("local\\"));
  wizard().click("cmdPath", 1);
  EXPECT_EQ(wizard().config().PatientData, path("shared\\"));
  EXPECT_EQ(read("shared\\index.mdb"), "x");
}

TEST_F(Folder, ANewSharedDatabaseGetsItsIndex) {
  support::host_file_system().create_folder(path("new"));
  user.chosen_folder = path("new\\\\");
  wizard().click("cmdPath", 0);
  EXPECT_EQ(wizard().config().PatientData, path("new\\"));
  EXPECT_EQ(wizard().config().IndexDB, path("new\\index.mdb"));
  EXPECT_TRUE(support::file_test(support::host_file_system(), path("new\\index.mdb")));
  EXPECT_EQ(caption("lblFolder"), path("new\\"));
}

/// The progress of the walk over a shared folder's patients; the user may cancel it before the second one.
struct WatchedProgress : database::Progress {
  void start(std::string_view caption, std::int32_t maximum) override {
    log.push_back("start " + std::string(caption) + " " + std::to_string(maximum));
  }
  void set_caption(std::string_view) override {}
  void set_value(std::int32_t value) override { log.push_back(std::to_string(value)); }
  void finish() override { log.emplace_back("finish"); }
  void offer_cancel(std::string_view caption) override { log.push_back("offer " + std::string(caption)); }
  bool cancelled() const override { return ends && std::ranges::count(log, "50") > 0; }
  std::vector<std::string> log;
  bool ends = false;
};

/// Two patients in an index that is not up to date: the database of one is sound, that of the other is not.
class SharedFolder : public Folder {
 protected:
  SharedFolder() {
    texts->given = {{4886, "%1/%2"}, {4888, "%1 %2"}};
    known_database("shared\\db4_000001.das");
    write("shared\\db4_000002.das", "damaged");
    database::CreateIndexDatabase({}, path("shared\\index.mdb"));
    for (const std::string id : {"1", "2"}) {
      execute(path("shared\\index.mdb"), "INSERT INTO index (id) VALUES (" + id + ")");
    }
    user.chosen_folder = path("shared");
    start("Pro");
    user.log.clear();
    progress.log.clear();
  }
  void adapt(Ports& ports) override { ports.progress = &progress; }
  std::vector<std::string> due() const {
    return rows(path("shared\\index.mdb"), "SELECT id FROM upgrade_pending ORDER BY id");
  }
  WatchedProgress progress;
};

TEST_F(SharedFolder, TellsWhichPatientsCouldNotBeUpgraded) {
  wizard().click("cmdPath", 1);
  EXPECT_THAT(progress.log,
              ElementsAre("start Aktualisiere Datenbank...50% 100", "offer T901", "50", "100", "50", "100", "finish"));
  EXPECT_THAT(user.log, Contains("message 1/2\r\n" + path("shared\\db4_000002.das") + " 3343 65600 T4650"));
  EXPECT_THAT(due(), ElementsAre("2"));
  enter_name();
  finish();
  EXPECT_FALSE(wizard().report().complete());
  EXPECT_THAT(lines(wizard().report()), Contains(HasSubstr("3343")));
}

TEST_F(SharedFolder, GoesOnAfterAWalkThatWasCancelled) {
  progress.ends = true;
  wizard().click("cmdPath", 1);
  EXPECT_THAT(user.log, Contains("message 1/2\r\nT4887 65600 T4650"));
  EXPECT_THAT(due(), ElementsAre("2"));
  progress.ends = false;
  const std::filesystem::path damaged = support::host_file_system().host_path(path("shared\\db4_000002.das"));
  // On Windows, the standard library does not overwrite an existing file.
  std::filesystem::remove(damaged);
  std::filesystem::copy_file(support::host_file_system().host_path(path("shared\\db4_000001.das")), damaged);
  user.log.clear();
  wizard().click("cmdPath", 1);
  EXPECT_THAT(user.log, Not(Contains(HasSubstr("message"))));
  EXPECT_EQ(rows(path("shared\\index.mdb"), "SELECT name FROM index").size(), 2U);
}

TEST_F(Folder, ANetworkPathIsNamedAsShared) {
  user.chosen_folder = "\\\\server\\share";
  wizard().click("cmdPath", 1);
  EXPECT_EQ(wizard().config().PatientData, "\\\\server\\share\\");
  EXPECT_EQ(caption("lblLocation"), "T4686");
}

}  // namespace
}  // namespace wizard::testing
