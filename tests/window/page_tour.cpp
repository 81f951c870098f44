// page_tour PICTURES [OPTION…] [COMMANDLINE]: starts the wizard with the rest of the command line, answers what must be
// answered, stores a picture of each page in the folder PICTURES, and finishes. Exit code 0 where the wizard did.
#include <windows.h>

#include <exception>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>

#include "support/win32/wide.h"
#include "tests/window/driver/window_picture.h"
#include "tests/window/driver/wizard_program.h"

namespace {

using window_driver::WizardProgram;

struct Answer {
  std::string_view control, text;
};

constexpr Answer answers[] = {
    {"txtFirstName", "Jörg"},
    {"txtName", "Müller"},
    {"txtStreet", "Lindenstraße 7"},
    {"txtZIP", "10969"},
    {"txtCity", "Berlin"},
    {"cbInsulin(1)", "Insulin glargin 100 E/ml"},
    {"cbInsulin(3)", "Insulin lispro"},
    {"txtMedik(0)", "Metformin"},
};

constexpr std::string_view chosen[] = {"optGender(1)", "optDataEntry(1)", "optThumb(4)"};

void answer_page(const WizardProgram& wizard) {
  for (const auto& [control, text] : answers) {
    if (wizard.is_shown(control) && wizard.text(control).empty()) wizard.type(control, text);
  }
  for (const std::string_view list : {"cbDiabetesTyp", "cbTherapie", "cbSchema"}) {
    if (wizard.is_shown(list)) wizard.choose(list, 1);
  }
  for (const std::string_view option : chosen) {
    if (wizard.is_shown(option) && !wizard.is_chosen(option)) SendMessageW(wizard.control(option), BM_CLICK, 0, 0);
  }
}

/// A third of a second, for pictures that come in after the page.
constexpr DWORD settling_time = 350;

void store_picture(const WizardProgram& wizard, const std::string& folder, int number) {
  std::ostringstream name;
  name << folder << '\\' << std::setw(2) << std::setfill('0') << number << '-' << wizard.page() << ".png";
  Sleep(settling_time);
  if (!window_driver::save_picture(wizard.window(), name.str()))
    throw std::runtime_error("no picture can be stored: " + name.str());
  std::cout << name.str() << '\n';
}

std::string quoted_where_needed(const std::string& word) {
  return word.find(' ') == std::string::npos ? word : '"' + word + '"';
}

int tour(const std::string& pictures, const std::string& arguments) {
  const WizardProgram wizard(arguments);
  for (int number = 1; wizard.page() != "Fertig"; ++number) {
    answer_page(wizard);
    store_picture(wizard, pictures, number);
    wizard.next();
    if (wizard.page() == "Fertig") store_picture(wizard, pictures, number + 1);
  }
  wizard.press("Command1(0)");
  // Asked whether files may go to the recycle bin, it agrees.
  while (window_driver::wait_until([&] { return wizard.asks() || !wizard.process().is_running(); }) && wizard.asks())
    wizard.answer(IDYES);
  const auto code = wizard.process().wait_for_end();
  if (!code) throw std::runtime_error("the wizard does not end");
  return static_cast<int>(*code);
}

}  // namespace

int wmain(int count, wchar_t** words) {
  std::string arguments;
  for (int n = 2; n < count; ++n) arguments += quoted_where_needed(support::narrow(words[n])) + " ";
  try {
    if (count < 2) throw std::runtime_error("usage: page_tour PICTURES [OPTION…] [COMMANDLINE]");
    return tour(support::narrow(words[1]), arguments);
  } catch (const std::exception& error) {
    std::cerr << "page_tour: " << error.what() << '\n';
    return 1;
  }
}
