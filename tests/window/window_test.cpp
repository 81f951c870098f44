#include "tests/window/window_test.h"

namespace window_driver {

WizardProgram& WindowTest::start(std::string_view command_line) {
  wizard_.reset();
  wizard_.emplace(demo_.arguments(command_line));
  // Keys that are pressed before the window has the focus would go to the one before.
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
  while (wait_until([&] { return wizard().asks() || !wizard().process().is_running(); }) && wizard().asks())
    wizard().answer(IDYES);
  expect_end();
}

void WindowTest::expect_end() { EXPECT_EQ(wizard().process().wait_for_end(), 0u); }

}  // namespace window_driver
