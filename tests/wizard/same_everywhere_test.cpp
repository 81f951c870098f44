// A property: for every filling of the pages, the last page, a dry run, and registry, home page and database after the
// finish show the same. FILLINGS says how many random fillings are tried (default 60).
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

#include "apps/firststeps_batch/report.h"
#include "database/open_database.h"
#include "database/therapy_plan.h"
#include "support/encoding.h"
#include "support/measured_value.h"
#include "support/text.h"
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

/// A registry in memory; the real ones have their own tests.
class Values : public support::Registry {
 public:
  bool key_exists(support::RootKey, std::string_view) const override { return true; }
  std::optional<support::RegistryValue> read(support::RootKey root, std::string_view key,
                                             std::string_view name) const override {
    const auto found = values_.find(place(root, key, name));
    if (found == values_.end()) return std::nullopt;
    return support::RegistryValue{support::RegistryValue::text_type, found->second, 0};
  }
  CreateResult create_key(support::RootKey, std::string_view, std::string_view) override {
    return CreateResult::Existed;
  }
  bool write_text(support::RootKey root, std::string_view key, std::string_view name, std::string_view value) override {
    values_[place(root, key, name)] = value;
    return true;
  }
  bool can_write(support::RootKey, std::string_view) const override { return true; }
  void clear() { values_.clear(); }

 private:
  static std::string place(support::RootKey root, std::string_view key, std::string_view name) {
    return support::to_lower(std::to_string(static_cast<std::uint32_t>(root)) + "\\" + std::string(key) + "\\" +
                             std::string(name));
  }
  std::map<std::string, std::string> values_;
};

/// A folder where files are fast, if the machine has one.
std::filesystem::path quick_folder() {
  const std::filesystem::path memory = "/dev/shm";
  std::error_code ignored;
  return std::filesystem::is_directory(memory, ignored) ? memory : std::filesystem::temp_directory_path();
}

int fillings() {
  const char* const wanted = std::getenv("FILLINGS");
  const int number = wanted ? std::atoi(wanted) : 0;
  return number > 0 ? number : 60;
}

constexpr const char* pieces[] = {"a",  "Z",  "ß",    "Ş",   "ğ",   "Ж",      "漢",   "😀", "é",       " ", "  ",
                                  "'",  "\"", "|",    "^",   "&",   "%1",     "\\",   "/", ":",       "*", "?",
                                  "<",  "\t", "\x01", ",",   ".",   ";",      "[",    "]", "=",       "0", "7",
                                  "12", "-",  "--",   "\\n", "100", "Müller", "NULL", "#", "\xC2\xA0"};
constexpr const char* numbers[] = {"70",    "150", "5,6",   "8,3",   "100",   "130", "0",     "-5",
                                   "99999", "1e3", "12,5",  "",      "abc",   "7",   "400,4", "33",
                                   " 120 ", "5.6", "1.000", "32767", "32768", "4,44"};

class SameEverywhere : public WizardTest {
 protected:
  SameEverywhere() : WizardTest(quick_folder()) {
    write("pelmar.ini",
          "[setup]\ndisplay=INtro|netpath|Maßeinheit|Patdat|Insulin|Medikamente|Therapie_bz|Therapie_bp|"
          "pics|eingabe|Darstellung|Schema|sidebar|start|Fertig\n"
          "[CHARTS]\nday=1^2\nweek=3^4\npie=5^6\nbar=7^8\nodd=9^10\n");
    write("schemes.txt", "[a]\nDesc=A\n[b]\nDesc=B\n[c]\n");
    for (long line = 4831; line <= 4854; ++line) texts->given[line] = std::to_string(line) + " %1|%2|%3|%4|%5";
    texts->given[nothing] = "-";
    texts->given[4863] = "%1 is not stored";
  }

  void adapt(Ports& ports) override { ports.registry = &values_; }

  static constexpr long nothing = 4850;

  int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }
  bool one_in(int n) { return below(n) == 0; }
  template <typename Choices>
  auto any(const Choices& choices) {
    return choices[static_cast<std::size_t>(below(static_cast<int>(std::size(choices))))];
  }
  /// A random text, cut to what the window accepts.
  std::string any_text(int limit) {
    std::string text;
    const int length = one_in(8) ? 60 : below(8);
    for (int n = 0; n < length; ++n) text += any(pieces);
    while (static_cast<int>(support::utf16_from_utf8(text).size()) > limit)
      text = support::first_characters(text, support::character_count(text) - 1);
    return text;
  }

  void prepare();
  void fill();
  void walk();
  void try_one(int number);
  std::string expected_summary();

  /// A value of the registry as the diary reads it.
  std::string stored(std::string_view key, std::string_view name) {
    std::string value;
    support::ReadRegValue(values_, support::RootKey::CurrentUser, key, name, value);
    return value;
  }
  std::vector<std::vector<std::string>> query(std::string_view sql) {
    database::Environment environment;
    environment.password = database::default_password;
    std::unique_ptr<engine::Engine> engine;
    std::unique_ptr<engine::Database> database;
    database::OpenPatientDatabase(environment, stored(key_, "DataBaseName"), true, false, engine, database);
    std::vector<std::vector<std::string>> found;
    for (const auto set = database->open_recordset(sql); !set->eof(); set->move_next()) {
      auto& row = found.emplace_back();
      for (std::int32_t n = 0; n < set->field_count(); ++n) {
        const engine::Value cell = set->value(n);
        row.push_back(engine::is_null(cell) ? "" : engine::to_text(cell));
      }
    }
    return found;
  }
  std::string line(long number, std::vector<std::string> values) { return wizard().config().text(number, values); }
  std::string or_nothing(const std::string& text) { return text.empty() ? "-" : text; }
  std::string list_of(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
      if (!name.empty()) list += (list.empty() ? "" : ", ") + name;
    return or_nothing(list);
  }
  std::string patient_group();
  std::string therapy_lines();
  std::string charts_line();

  std::mt19937 random_{20240517};
  Values values_;
  std::string key_;
  std::string known_;  ///< the content of a database that a run has made
};

/// Prepares a patient without a database, one with a database, or the professional edition.
void SameEverywhere::prepare() {
  values_.clear();
  std::error_code ignored;
  std::filesystem::remove_all(support::host_file_system().host_path(path("patients")), ignored);
  write("home.ini", one_in(3) ? "[setup]\nhomepage=h\n[h]\nCHART1=0|0|day|1\nCHART3=1|2|foreign\nCHART5=a|b|odd|c\n"
                              : "[setup]\nhomepage=h\n[h]\nCHART1=0|0|week|1\nCHART2=\n");
  const bool professional = one_in(4);
  key_ = professional ? "SOFTWARE\\Lumoraquant\\Pro" : std::string(installation_key);
  if (professional) write("patients\\index.mdb", "x");
  // The key of each new database must be derived; copies of one database share a key.
  const bool known = !known_.empty() && !one_in(25);
  if (known) {
    std::ofstream(support::host_file_system().host_path(path("")) + "/known.das", std::ios::binary) << known_;
    write("setup.ini", "[setup]\nCurrentDB=" + path("known.das") + "\n");
  } else {
    write("setup.ini", "[setup]\n");
  }
  values_.write_text(support::RootKey::CurrentUser, key_, "Scheme", std::to_string(below(4)));
  start(professional ? "Pro" : "vantrix");
}

void SameEverywhere::fill() {
  for (const auto& owned : wizard().form().controls()) {
    form::Control& box = *owned;
    const bool shown = box.visible() && box.enabled();
    if (!shown || one_in(3)) continue;
    switch (box.kind()) {
      case form::Kind::TextBox:
        if (box.editable())
          type(box.name(), box.name() == "txtvorgabe" ? any(numbers) : any_text(box.maximum()), box.index());
        break;
      case form::Kind::ComboBox:
        if (box.editable() && !one_in(4)) {
          type(box.name(), any_text(box.maximum()), box.index());
        } else if (!box.items().empty()) {
          box.set_list_index(below(static_cast<int>(box.items().size())));
          wizard().click(box.name(), box.index());
        }
        break;
      case form::Kind::OptionButton:
        choose(box.name(), box.index());
        break;
      case form::Kind::ChartOption:
        if (!box.tag().empty()) tick(box.index(), below(2));
        break;
      default:
        break;
    }
  }
}

/// Walks through the pages; a page that refuses its values gets others.
void SameEverywhere::walk() {
  for (int steps = 0; steps < 60 && wizard().StepName() != "Fertig"; ++steps) {
    const int step = wizard().CurrentStep();
    if (wizard().StepName() == "pics") tick(below(5), below(2));
    next();
    if (wizard().CurrentStep() != step) continue;
    if (support::equal_ignoring_case(wizard().StepName(), "Patdat")) {
      enter_name("V" + any_text(40), "N" + any_text(40));
    } else {
      const bool mmol = control("optBGUnit", 1).value() != 0;
      const char* const targets[2][4] = {{"80", "160", "60", "200"}, {"4,45", "8", "3,1", "9,99"}};
      for (int n = 0; n < 4; ++n) type("txtvorgabe", targets[mmol][n], n);
    }
  }
  ASSERT_EQ(wizard().StepName(), "Fertig");
}

std::string SameEverywhere::patient_group() {
  const std::string database = stored(key_, "DataBaseName");
  const auto row = query("SELECT firstname, name, street, zip, city, gender, typ, therapy FROM patdat").at(0);
  std::string address = row[2], city = support::trim(row[3] + " " + row[4]);
  if (!address.empty() && !city.empty()) address += ", ";
  const auto numbered = [&](long first, const std::string& number) {
    return number.empty() || number == "0" ? "-" : "T" + std::to_string(first + std::stol(number) - 1);
  };
  const bool made = !database.ends_with("known.das");
  return "T4704:\r\n    " + line(4831, {row[0] + " " + row[1]}) + "\r\n    " +
         line(4852, {or_nothing(address + city)}) + "\r\n    " + line(4853, {row[5] == "1" ? "T4747" : "T4746"}) +
         "\r\n    " + line(4832, {numbered(4811, row[6])}) + "\r\n    " + line(4833, {numbered(4821, row[7])}) +
         "\r\n    " + line(made ? 4847 : 4848, {database});
}

std::string SameEverywhere::therapy_lines() {
  std::vector<std::string> insulins, drugs;
  const bool has_insulin_page = wizard().form().at("cbTherapie").selected_item_data() != 5;
  for (const auto& row : query("SELECT itemtype, [desc] FROM therapieplan_details WHERE lid = (SELECT MAX(id) FROM "
                               "therapieplan) ORDER BY itemtype")) {
    const int type = std::stoi(row[0]);
    if (const std::string name = database::insulin_name(row[1]); has_insulin_page && type <= 4 && !name.empty())
      insulins.push_back("T" + std::to_string(4766 + type) + ": " + name);
    if (type >= 800) drugs.push_back(row[1]);
  }
  std::string lines;
  if (has_insulin_page && insulins.empty()) lines += line(4839, {"-"}) + "\r\n";
  if (insulins.size() > 1) lines += "T4705:\r\n";
  for (const std::string& insulin : insulins) lines += (insulins.size() > 1 ? "    " : "") + insulin + "\r\n";
  lines += line(4840, {list_of(drugs)}) + "\r\n";
  const auto targets = query(
                           "SELECT BGTargetMin, BGTargetMax, BGHypo, BGHyper, BPTargetSysMin, BPTargetSysMax, "
                           "BPTargetDiaMin, BPTargetDiaMax FROM patdat_setup")
                           .at(0);
  const bool mmol = stored(key_ + "\\Profiles\\default\\User Configuration", "BGUnit") == "1";
  std::vector<std::string> glucose;
  for (std::size_t n = 0; n < 4; ++n) glucose.push_back(mmol ? support::to_mmol_l(std::stod(targets[n])) : targets[n]);
  glucose.emplace_back(mmol ? "mmol/l" : "mg/dl");
  return lines + line(4835, glucose) + "\r\n" + line(4838, {targets[4], targets[5], targets[6], targets[7]}) + "\r\n";
}

std::string SameEverywhere::charts_line() {
  std::vector<std::string> titles;
  for (int slot = 1; slot <= 5; ++slot) {
    std::vector<std::string> fields;
    support::Split(support::host_ini_files().value(path("home.ini"), "h", "CHART" + std::to_string(slot), "", 4096),
                   fields, "|");
    constexpr std::string_view keys[] = {"day", "week", "pie", "bar", "odd"};
    for (int n = 0; n < 5; ++n)
      if (fields.size() > 2 && fields[2] == keys[n]) titles.push_back("T" + std::to_string(2 * n + 1));
  }
  return line(4841, {list_of(titles)});
}

/// The expected text of the last page, made from what is stored now.
std::string SameEverywhere::expected_summary() {
  const bool professional = wizard().config().ProEdition;
  const std::string profile = key_ + "\\Profiles\\default\\User Configuration";
  const auto option = [&](std::string_view key, std::string_view name, std::vector<std::string> words, long caption) {
    const auto place = std::ranges::find(words, stored(key, name)) - words.begin();
    return "T" + std::to_string(caption + place);
  };
  std::string text =
      line(professional ? 4854 : 4849, {professional ? path("patients\\") : stored(key_, "PATIENTDATA")});
  text += "\r\n" + line(4834, {option(profile, "BGUnit", {"0", "1"}, 4751)}) + "\r\n";
  if (professional)
    for (const char* heading : {"T4704", "T4705", "T4706", "T4707", "T4708"}) {
      // Without insulin, the page for insulins is left out.
      if (heading == std::string("T4705") && control("cbTherapie").selected_item_data() == 5) continue;
      text += line(4863, {heading}) + "\r\n";
    }
  else
    text += patient_group() + "\r\n" + therapy_lines();
  text += charts_line() + "\r\n";
  text +=
      line(4842,
           {option(profile + "\\DataEntry", "DefaultDataEntry", {"EDIT_DIARY", "EDIT_QUICKENTRY", "EDIT_LOG"}, 4777)}) +
      "\r\n";
  text += line(4843, {option(profile, "OutlookStyle", {"0", "1"}, 4784)}) + "\r\n";
  constexpr const char* schemes[] = {"A", "B", "c", "-"};
  text += line(4844, {schemes[std::stoi(stored(key_, "Scheme"))]}) + "\r\n";
  text += line(4845, {option(profile, "ShowOutlookbar", {"0", "1"}, 4789)}) + "\r\n";
  return text + line(4846, {option(profile, "RunOnStart", {"mnu_home", "mnu_patreview", "mnu_last"}, 4793)});
}

/// What a dry run prints of these entries.
std::string dry_run(FinishReport report) {
  for (auto& entry : report.entries) entry.written = false;
  std::ostringstream out;
  firststeps_batch::write_json(out,
                               {.dry_run = true, .finish = report, .warnings = {}, .messages = {}, .unused_pages = {}});
  return out.str();
}

void SameEverywhere::try_one(int number) {
  SCOPED_TRACE("filling " + std::to_string(number));
  prepare();
  for (int times = 0; times < 2; ++times) fill();
  ASSERT_NO_FATAL_FAILURE(walk());
  const std::string summary = text("lblSummary");
  const FinishReport preview = wizard().preview();
  next();
  ASSERT_EQ(wizard().state(), frmAssistantFirstSteps::State::Finished);
  const FinishReport& report = wizard().report();
  ASSERT_TRUE(report.complete()) << ::testing::PrintToString(lines(report));
  EXPECT_EQ(dry_run(preview), dry_run(report));
  for (const auto& entry : report.entries) {
    if (entry.what != FinishReport::What::RegistryValue) continue;
    EXPECT_EQ(stored(entry.place.substr(entry.place.find('\\') + 1), entry.name), support::trim(entry.value));
  }
  const std::string expected = expected_summary();
  EXPECT_TRUE(summary.ends_with(expected)) << summary << "\n\nis stored as\n\n" << expected;
  if (known_.empty()) known_ = support::host_file_system().read(wizard().config().CurrentDB, 16 << 20).value_or("");
}

TEST_F(SameEverywhere, TheLastPageADryRunAndWhatIsStored) {
  for (int number = 0; number < fillings() && !HasFailure(); ++number) try_one(number);
}

}  // namespace
}  // namespace wizard::testing
