// The environment in which the console tool calls the database procedures, and the question that is asked before pump
// data are converted: --yes or --no answers it, else the user at the terminal.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string_view>

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "database/environment.h"

namespace patientdb {

/// Password and engine come from the arguments, the German texts from the program's folder if they are there. Questions
/// are not asked.
class ToolEnvironment {
 public:
  ToolEnvironment(const console::Arguments& arguments, const console::Console& console);
  database::Environment& get() noexcept { return environment_; }
  const database::Environment& get() const noexcept { return environment_; }

 private:
  std::unique_ptr<support::LanguageComponent> texts_;
  database::Environment environment_;
};

/// While this object lives, each step that a database procedure passes over becomes a line on standard error.
class SkippedStepLines {
 public:
  explicit SkippedStepLines(std::ostream& err);
  std::size_t count() const noexcept { return count_; }

 private:
  std::size_t count_ = 0;
  support::SkippedStepWatch watch_;
};

inline constexpr console::Option yes_option{"--yes", "", "Convert pump data without asking."};
inline constexpr console::Option no_option{"--no", "", "Leave pump data as they are, without asking."};

class PumpQuestion {
 public:
  /// Raises UsageError if both answers are given. `before_asking` clears the line on which the question will stand.
  PumpQuestion(const console::Arguments& arguments, console::Console& console, std::function<void()> before_asking);

  /// For an environment that this object outlives. Raises 3059 if nobody answers: a declined question would never be
  /// asked again.
  database::MessageBox message_box();

 private:
  int ask(std::string_view text, std::string_view title);

  console::Console& console_;
  std::function<void()> before_asking_;
  std::optional<int> answer_;
};

}  // namespace patientdb
