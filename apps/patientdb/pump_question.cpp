#include "apps/patientdb/pump_question.h"

#include <string>
#include <utility>

#include "support/encoding.h"
#include "support/error.h"

namespace patientdb {
namespace {

constexpr int button_ok = 1, button_cancel = 2;

}  // namespace

PumpQuestion::PumpQuestion(const console::Arguments& arguments, console::Console& console,
                           std::function<void()> before_asking)
    : console_(console), before_asking_(std::move(before_asking)) {
  const bool yes = arguments.has(yes_option.name), no = arguments.has(no_option.name);
  if (yes && no) throw console::UsageError("--yes and --no exclude each other.");
  if (yes) answer_ = button_ok;
  if (no) answer_ = button_cancel;
}

database::MessageBox PumpQuestion::message_box() {
  return [this](std::string_view text, std::uint32_t, std::string_view title) {
    return answer_ ? *answer_ : ask(text, title);
  };
}

int PumpQuestion::ask(std::string_view text, std::string_view title) {
  before_asking_();
  console_.err << title << "\n" << text << "\n";
  for (std::string line;;) {
    console_.err << "[O]K / [A]bbruch: " << std::flush;
    if (!console_.in || !std::getline(*console_.in, line)) {
      console_.err << '\n';
      throw support::RuntimeError(support::error_number::cancelled,
                                  "The question about the pump data needs an answer: --yes or --no.");
    }
    const std::string answer = support::to_lower(line.substr(0, line.find_last_not_of(" \r") + 1));
    if (answer == "o" || answer == "ok") return button_ok;
    if (answer == "a" || answer == "abbruch") return button_cancel;
  }
}

}  // namespace patientdb
