// The groups of options that are kept as registry values in the user's profile: a value, a control array, and a word
// for each option. Each page lists its groups. They are read when the pages are preset, and written at the finish.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "wizard/context.h"

namespace wizard {

struct OptionGroup {
  /// Position among the values that the finish writes, from 1. Values up to `last_before_profile` are written before
  /// the patient's profile, the others with it.
  int order = 0;
  std::string_view value_name;
  /// Subkeys of the user key. Both spellings mean one key to the registry.
  std::string_view read_below = {}, written_below = {};
  std::string_view controls;              ///< name of the control array
  std::array<std::string_view, 3> words;  ///< by option; empty: no such option
  int default_option = 0;                 ///< if the value is missing or has another word
};

inline constexpr int last_before_profile = 3;

/// Index of the first chosen option of any control array; -1 if none is chosen.
int chosen_option(const form::Form& form, std::string_view controls);

/// The groups of all pages, in the order in which the finish writes them.
std::vector<const OptionGroup*> option_groups();

/// In every group, chooses the option that the registry names.
void preset_options(Context& context);

/// The option whose word will be written: the chosen one, or the default one if none is chosen.
int written_option(const form::Form& form, const OptionGroup& group);

}  // namespace wizard
