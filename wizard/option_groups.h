// The groups of options that are kept as registry values of the user's profile: a value, a control array, and a word
// for each option. One table, read when the pages are preset and written at the finish.
#pragma once

#include <array>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

struct OptionGroup {
  std::string_view value_name;
  /// Below the user key. The registry takes both spellings for one key.
  std::string_view read_below, written_below;
  std::string_view controls;              ///< name of the control array
  std::array<std::string_view, 3> words;  ///< by option; empty: no such option
  int default_option;                     ///< where the value is missing or says something else
};

/// Index of the first chosen option of a control array, whether or not the registry keeps it; -1 where none is.
int chosen_option(const form::Form& form, std::string_view controls);

/// The group of a registry value. Precondition: the table has one.
const OptionGroup& option_group(std::string_view value_name);

/// Chooses in every group the option that the registry names.
void preset_options(Context& context);

/// The word of the chosen option, or of the default one where none is chosen.
std::string_view chosen_word(const form::Form& form, const OptionGroup& group);

}  // namespace wizard
