// The surroundings that the console tool gives the database procedures, and the question before pump data are
// converted: --yes or --no answers it, else the user at the terminal.
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

/// Password and engine by the arguments, German texts from beside the program where they lie there. Questions are not
/// asked.
class ToolEnvironment {
 public:
  ToolEnvironment(const console::Arguments& arguments, const console::Console& console);
  database::Environment& get() noexcept { return environment_; }
  const database::Environment& get() const noexcept { return environment_; }

 private:
  std::unique_ptr<support::LanguageComponent> texts_;
  database::Environment environment_;
};

/// Turns statements that a database procedure passed over into lines on standard error while it lives.
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
  /// Raises UsageError for both answers at once. `before_asking` clears the line that the question is to stand on.
  PumpQuestion(const console::Arguments& arguments, console::Console& console, std::function<void()> before_asking);

  /// For an environment that this outlives. Raises 3059 where nobody answers: going on as if the question had been
  /// declined would never ask it again.
  database::MessageBox message_box();

 private:
  int ask(std::string_view text, std::string_view title);

  console::Console& console_;
  std::function<void()> before_asking_;
  std::optional<int> answer_;
};

}  // namespace patientdb
