// The choices that are kept as registry values of the user's profile: an option group, a value, and a word per option.
// One table, read when the pages are preset and written at the finish.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

struct OptionChoice {
  std::string_view value_name;
  /// Below the user key. The registry takes both spellings for one key.
  std::string_view read_below, written_below;
  std::string_view options;               ///< name of the control array
  std::array<std::string_view, 3> words;  ///< by option; empty: no such option
  int default_option;                     ///< where the value is missing or says something else
};

/// Index of the first selected option of a control array; -1 where none is.
int selected_option(const form::Form& form, std::string_view options);

/// The row of a registry value. Precondition: the table has one.
const OptionChoice& option_choice(std::string_view value_name);

/// Selects in every group the option that the registry names.
void preset_options(Context& context);

/// The word of the selected option, or of the default one where none is selected.
std::string_view chosen_word(const form::Form& form, const OptionChoice& choice);

}  // namespace wizard
