// The groups of options that are kept as registry values of the user's profile: a value, a control array, and a word
// for each option. Each page names its groups; they are read when the pages are preset and written at the finish.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "wizard/context.h"

namespace wizard {

struct OptionGroup {
  /// Place among the values that the finish writes, from 1; those up to `last_before_profile` come before the patient's
  /// profile, the others with it.
  int order = 0;
  std::string_view value_name;
  /// Below the user key. The registry takes both spellings for one key.
  std::string_view read_below = {}, written_below = {};
  std::string_view controls;              ///< name of the control array
  std::array<std::string_view, 3> words;  ///< by option; empty: no such option
  int default_option = 0;                 ///< where the value is missing or says something else
};

inline constexpr int last_before_profile = 3;

/// Index of the first chosen option of a control array, whether or not the registry keeps it; -1 where none is.
int chosen_option(const form::Form& form, std::string_view controls);

/// The groups of all pages, in the order in which the finish writes them.
std::vector<const OptionGroup*> option_groups();

/// Chooses in every group the option that the registry names.
void preset_options(Context& context);

/// The option whose word is written: the chosen one, or the default one where none is chosen.
int written_option(const form::Form& form, const OptionGroup& group);

}  // namespace wizard
