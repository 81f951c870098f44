// What the scenarios of this room share: the demo installation in a folder, and the wizard's program on it.
#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string_view>

#include "tests/window/driver/demo_installation.h"
#include "tests/window/driver/input.h"
#include "tests/window/driver/wizard_program.h"

namespace window_driver {

class WindowTest : public ::testing::Test {
 protected:
  /// Starts the program on the installation and ends the previous one.
  WizardProgram& start(std::string_view command_line = "vantrix");
  WizardProgram& wizard() { return *wizard_; }

  /// Enters what the pages require before they can be left.
  void enter_patient(std::string_view first_name = "Jörg", std::string_view name = "Müller");
  /// Walks to the last page and finishes; every question is answered with Yes.
  void finish();
  /// Answers the questions of a finish, including its last one.
  void answer_with_yes();
  /// Closes the page that says that everything is done, if there is one, and waits until the program has ended with 0.
  void expect_end();

  DemoInstallation demo_;

 private:
  // With this time, nothing has to wait for pages to settle.
  const DoubleClickTime double_click_time_{1};
  std::optional<WizardProgram> wizard_;
};

/// While this object exists, the system believes that a screen reader runs.
class ScreenReader {
 public:
  ScreenReader() { SystemParametersInfoW(SPI_SETSCREENREADER, TRUE, nullptr, 0); }
  ~ScreenReader() { SystemParametersInfoW(SPI_SETSCREENREADER, FALSE, nullptr, 0); }
  ScreenReader(const ScreenReader&) = delete;
  ScreenReader& operator=(const ScreenReader&) = delete;
};

/// Whether a test that sees every case looks at all of them: with WINDOW_CASES=all in the environment, as "./test
/// --all" sets it. Else it looks at a few that differ most.
bool all_cases();

/// The pages of a standard run, by tag.
inline constexpr std::string_view standard_pages[] = {
    "Intro", "Maßeinheit", "PatDat",  "Insulin",    "Medikamente", "Therapie_BZ", "Therapie_BP",
    "Pics",  "Eingabe",    "sidebar", "tip_navbar", "tip_splits",  "tip_stats",   "Fertig",
};

/// Every page that exists, as an installation lists them.
inline constexpr std::string_view every_page =
    "INtro|netpath|Maßeinheit|Patdat|Insulin|Medikamente|Therapie_bz|Therapie_bp|pics|eingabe|Darstellung|Schema|"
    "sidebar|start|tip_navbar|tip_splits|tip_stats|Fertig";

}  // namespace window_driver
