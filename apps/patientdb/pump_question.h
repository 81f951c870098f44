// The question before pump data are converted: answered by --yes or --no, else on the terminal.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "database/environment.h"

namespace patientdb {

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
