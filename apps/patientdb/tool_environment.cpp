#include "apps/patientdb/tool_environment.h"

#include <ostream>
#include <string>
#include <utility>

#include "apps/patientdb/database_operand.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/file_system.h"

namespace patientdb {

ToolEnvironment::ToolEnvironment(const console::Arguments& arguments, const console::Console& console) {
  if (!console.program_folder.empty()) {
    texts_ = support::open_text_table(support::host_file_system().windows_path(console.program_folder), "");
  }
  environment_.password = password(arguments, console);
  environment_.language = texts_.get();
  environment_.open_engine = engine_of(arguments);
  environment_.rows_left = [&err = console.err](const database::RowsLeft& rows) { err << sentence(rows) << '\n'; };
}

SkippedStepLines::SkippedStepLines(std::ostream& err)
    : watch_([this, &err](std::string_view label, const support::RuntimeError& error) {
        ++count_;
        err << label << ": error " << error.number() << ": " << error.what() << '\n';
      }) {}

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
