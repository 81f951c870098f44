// page_tour PICTURES [--answer CONTROL=TEXT]… [--last] [OPTION…] [COMMANDLINE]: starts the wizard with the rest of the
// command line, answers what must be answered, stores a picture of each page in the folder PICTURES, and finishes. Exit
// code 0 if the wizard ended with 0. With --last only the last page is stored, and the wizard is ended there.
#include <windows.h>

#include <exception>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/win32/wide.h"
#include "tests/window/driver/window_picture.h"
#include "tests/window/driver/wizard_program.h"

namespace {

using window_driver::WizardProgram;

struct Answer {
  std::string_view control, text;
};

constexpr Answer usual_answers[] = {
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

/// The part of the command line before the wizard's own.
struct Tour {
  std::string pictures;
  std::vector<std::pair<std::string, std::string>> answers;  ///< given before the usual ones
  bool last_only = false;
  std::string arguments;
};

void answer_page(const WizardProgram& wizard, const Tour& tour) {
  for (const auto& [control, text] : tour.answers) {
    if (wizard.is_shown(control)) wizard.type(control, text);
  }
  for (const auto& [control, text] : usual_answers) {
    if (wizard.is_shown(control) && wizard.text(control).empty()) wizard.type(control, text);
  }
  for (const std::string_view list : {"cbDiabetesTyp", "cbTherapie", "cbSchema"}) {
    if (wizard.is_shown(list)) wizard.choose(list, 1);
  }
  for (const std::string_view option : chosen) {
    if (wizard.is_shown(option) && !wizard.is_chosen(option)) SendMessageW(wizard.control(option), BM_CLICK, 0, 0);
  }
}

/// Parts that arrive after the page, such as pictures, are complete as soon as nothing changes any more. A page with an
/// animation is only given some time.
void wait_until_still(const WizardProgram& wizard) {
  constexpr DWORD interval = 150;  // milliseconds, shorter than a frame of an animation
  constexpr int most = 20, still = 3;
  std::map<COLORREF, std::size_t> before;
  for (int n = 0, same = 0; n < most && same < still; ++n) {
    Sleep(interval);
    SendMessageW(wizard.window(), WM_NULL, 0, 0);
    auto now = window_driver::colours_of(wizard.window());
    same = now == before ? same + 1 : 0;
    before = std::move(now);
  }
}

void store_picture(const WizardProgram& wizard, const std::string& folder, int number) {
  std::ostringstream name;
  name << folder << '\\' << std::setw(2) << std::setfill('0') << number << '-' << wizard.page() << ".png";
  wait_until_still(wizard);
  if (!window_driver::save_picture(wizard.window(), name.str()))
    throw std::runtime_error("no picture can be stored: " + name.str());
  std::cout << name.str() << '\n';
}

std::string quoted_where_needed(const std::string& word) {
  return word.find(' ') == std::string::npos ? word : '"' + word + '"';
}

int walk(const Tour& tour) {
  const WizardProgram wizard(tour.arguments);
  int number = 1;
  for (; wizard.page() != "Fertig"; ++number) {
    answer_page(wizard, tour);
    if (!tour.last_only) store_picture(wizard, tour.pictures, number);
    wizard.next();
    if (wizard.page() == "Fertig") store_picture(wizard, tour.pictures, number + 1);
  }
  if (tour.last_only) return 0;
  wizard.press("Command1(0)");
  // When asked whether files may go to the recycle bin, it agrees.
  const auto is_over = [&] { return !wizard.process().is_running() || !wizard.is_shown("Command1(2)"); };
  while (window_driver::wait_until([&] { return wizard.asks() || is_over(); }) && wizard.asks()) wizard.answer(IDYES);
  if (wizard.process().is_running()) store_picture(wizard, tour.pictures, number + 1);
  wizard.close_outcome();
  const auto code = wizard.process().wait_for_end();
  if (!code) throw std::runtime_error("the wizard does not end");
  return static_cast<int>(*code);
}

Tour read_tour(int count, wchar_t** words) {
  if (count < 2) throw std::runtime_error("usage: page_tour PICTURES [--answer CONTROL=TEXT]… [--last] [OPTION…] …");
  Tour tour{support::narrow(words[1]), {}, false, {}};
  for (int n = 2; n < count; ++n) {
    const std::string word = support::narrow(words[n]);
    if (word == "--last") {
      tour.last_only = true;
    } else if (word == "--answer" && n + 1 < count) {
      const std::string answer = support::narrow(words[++n]);
      tour.answers.emplace_back(answer.substr(0, answer.find('=')), answer.substr(answer.find('=') + 1));
    } else {
      tour.arguments += quoted_where_needed(word) + " ";
    }
  }
  return tour;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  try {
    return walk(read_tour(count, words));
  } catch (const std::exception& error) {
    std::cerr << "page_tour: " << error.what() << '\n';
    return 1;
  }
}
