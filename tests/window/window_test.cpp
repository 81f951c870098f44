#include "tests/window/window_test.h"

#include <cstdlib>

namespace window_driver {

bool all_cases() {
  const char* const wanted = std::getenv("WINDOW_CASES");
  return wanted != nullptr && std::string_view(wanted) == "all";
}

WizardProgram& WindowTest::start(std::string_view command_line) {
  wizard_.reset();
  wizard_.emplace(demo_.arguments(command_line));
  // Keys that are pressed before the window has the focus would go to another window.
  EXPECT_TRUE(wait_until([&] {
    SetForegroundWindow(wizard_->window());
    return GetForegroundWindow() == wizard_->window() && !wizard_->focus().empty();
  }));
  return *wizard_;
}

void WindowTest::enter_patient(std::string_view first_name, std::string_view name) {
  wizard().go_to("PatDat");
  wizard().type("txtFirstName", first_name);
  wizard().type("txtName", name);
}

void WindowTest::finish() {
  wizard().go_to("Fertig");
  ASSERT_EQ(wizard().page(), "Fertig");
  wizard().press("Command1(0)");
  answer_with_yes();
  expect_end();
}

void WindowTest::answer_with_yes() {
  const auto is_over = [this] { return !wizard().process().is_running() || !wizard().is_shown("Command1(2)"); };
  while (wait_until([&] { return wizard().asks() || is_over(); }) && wizard().asks()) wizard().answer(IDYES);
}

void WindowTest::expect_end() {
  wizard().close_outcome();
  EXPECT_EQ(wizard().process().wait_for_end(), 0u);
}

}  // namespace window_driver
