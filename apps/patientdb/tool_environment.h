// The surroundings that the console tool gives the database procedures.
#pragma once

#include <memory>
#include <ostream>

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

}  // namespace patientdb
