// What a finish could not write, in words for the user: what is missing, why, and what to do.
#pragma once

#include <string>
#include <vector>

#include "support/error.h"
#include "wizard/finish_outcome.h"
#include "wizard/installation_config.h"

namespace wizard {

/// Texts that tell why something was not written, and what to do, where no error says it.
namespace reason_text {
inline constexpr long registry_refuses = 6026, text_does_not_fit = 6028, no_free_name = 6027, not_read = 6030,
                      no_home_page = 6031, not_recycled = 6032, no_recycle_bin = 6054;
}  // namespace reason_text

/// Why something fails with this error, and what to do, in the user's language; its number where no text tells.
std::string error_reason(const InstallationConfig& config, const support::RuntimeError& error);

/// What an entry is called to a user.
std::string name_of_entry(const InstallationConfig& config, const FinishReport::Entry& entry);

struct FinishProblem {
  std::string what;       ///< what is missing
  std::string reason;     ///< why, and what to do
  std::string technical;  ///< place, value and error as programmers know them, in English
};

/// In the report's order; what is missing for the same reason and is called the same comes once, its technical lines
/// together. Empty where everything was written.
std::vector<FinishProblem> finish_problems(const InstallationConfig& config, const FinishReport& report);

}  // namespace wizard
