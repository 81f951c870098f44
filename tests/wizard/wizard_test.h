// What the tests of this room share: an installation in a folder with a hive and ini files, a user who acts on the form
// as the test says, and functions that show what a run has written.
#pragma once

#include <gmock/gmock.h>

#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/assistant.h"

namespace wizard::testing {

// What most of these tests use.
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// Gives "T" and the number, unless the test sets another text.
class Texts : public support::LanguageComponent {
 public:
  std::string loadres(long number) const override;
  std::map<long, std::string> given;
};

/// Answers as the test says and records what it was asked.
class ScriptedUser : public UserPort {
 public:
  int message_box(std::string_view text, std::uint32_t style, std::string_view title) override;
  std::optional<std::string> choose_folder(std::string_view title) override;
  bool open_file(std::string_view path) override;
  std::vector<std::string> recycle(std::string_view folder, std::string_view pattern) override;
  bool has_recycle_bin(std::string_view) override { return recycle_bin; }
  bool is_network_path(std::string_view path) override { return path.starts_with("\\\\"); }
  std::int32_t text_width(std::string_view text, std::string_view font) override;
  void set_topmost(bool topmost) override { log.push_back(topmost ? "topmost" : "not topmost"); }

  std::deque<int> answers;  ///< to message boxes; OK if there are no more
  std::optional<std::string> chosen_folder;
  bool recycles = true, recycle_bin = true;
  std::vector<std::string> log;  ///< "message TEXT STYLE TITLE", "folder TITLE", "open PATH", "recycle FOLDER PATTERN"…
};

class WizardTest : public ::testing::Test {
 protected:
  /// The installation lies in a new folder below this one.
  explicit WizardTest(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~WizardTest() override;
  /// Replaces ports of a run that is about to start.
  virtual void adapt(Ports& ports) { static_cast<void>(ports); }

  /// Windows path of a name in the installation.
  std::string path(std::string_view name) const { return folder_ + "\\" + std::string(name); }
  /// Writes a file of the installation; UTF-8 in, CP1252 in the file.
  void write(std::string_view name, std::string_view content) const;
  std::string read(std::string_view name) const;
  /// Name and content of every file in the installation, including the hive.
  std::map<std::string, std::string> everything() const;

  void set_value(support::RootKey root, std::string_view key, std::string_view name, std::string_view value);
  /// A value under the current user; nothing if it is missing.
  std::optional<std::string> value(std::string_view key, std::string_view name) const;
  static constexpr std::string_view installation_key = "SOFTWARE\\Lumoraquant\\vantrix";
  static constexpr std::string_view user_key = "SOFTWARE\\Lumoraquant\\vantrix\\Profiles\\default\\User Configuration";

  /// Starts a run and ends the previous one.
  frmAssistantFirstSteps& start(std::string_view command_line = "vantrix");
  /// The same; false if the run ends at once.
  bool try_start(std::string_view command_line);
  frmAssistantFirstSteps& wizard() { return *wizard_; }
  form::Control& control(std::string_view name, int index = -1) { return wizard_->form().at(name, index); }
  std::string caption(std::string_view name, int index = -1) { return control(name, index).caption(); }
  std::string text(std::string_view name, int index = -1) { return control(name, index).text(); }

  void next() { wizard_->click("Command1", 0); }
  void back() { wizard_->click("Command1", 1); }
  void cancel() { wizard_->click("Command1", 2); }
  /// Presses Next until the page is shown; fails if it never is.
  void go_to(std::string_view page);
  void choose(std::string_view options, int option);
  void tick(int chart, int value = 1);
  void select(std::string_view list, std::int32_t item_data);
  void type(std::string_view name, std::string_view text, int index = -1);
  void enter_name(std::string_view first_name = "Max", std::string_view name = "Muster");
  /// Walks on to the end. The patient must have a name already.
  void finish();

  /// A database that a run made on another day for Max Muster (type 1, intensified; bolus insulin Novorapid;
  /// Metformin).
  std::string known_database(std::string_view name = "patients\\known.das");
  /// The rows of a query, with values joined by "|", as German users write them.
  std::vector<std::string> rows(const std::string& database, std::string_view query) const;
  void execute(const std::string& database, std::string_view statement) const;
  /// "value=written" of every entry of the report, including problems.
  static std::vector<std::string> lines(const FinishReport& report);

  ScriptedUser user;
  std::shared_ptr<Texts> texts = std::make_shared<Texts>();
  engine::Date now = engine::date_from(2024, 5, 17, 14, 30, 0);

 private:
  std::string make_known_database();
  std::unique_ptr<engine::Database> open(const std::string& database, std::unique_ptr<engine::Engine>& engine) const;

  std::string folder_;
  std::unique_ptr<support::Registry> registry_;
  std::unique_ptr<frmAssistantFirstSteps> wizard_;
};

}  // namespace wizard::testing
