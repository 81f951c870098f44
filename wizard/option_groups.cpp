#include "wizard/option_groups.h"

#include <algorithm>

#include "support/encoding.h"

namespace wizard {

namespace {

// "OutlookStyle" and, in the standard edition, "RunOnStart" have no page in the usual lists. They are preset all the
// same, so that the finish writes back what it found.
constexpr OptionGroup groups[] = {
    {"OutlookStyle", "", "", "optDisplayStyle", {"0", "1"}, 0},
    {"DefaultDataEntry",
     "\\DataEntry",
     "\\dataentry",
     "optDataEntry",
     {"EDIT_DIARY", "EDIT_QUICKENTRY", "EDIT_LOG"},
     0},
    {"BGUnit", "", "", "optBGUnit", {"0", "1"}, 0},
    {"RunOnStart", "", "", "optShowStart", {"mnu_home", "mnu_patreview", "mnu_last"}, 1},
    {"ShowOutlookbar", "", "", "optShowSideBar", {"0", "1"}, 0},
};

int option_for(const OptionGroup& group, std::string_view word) {
  const auto match = std::ranges::find_if(group.words, [&](std::string_view candidate) {
    return !candidate.empty() && support::equal_ignoring_case(candidate, word);
  });
  return match == group.words.end() ? group.default_option : static_cast<int>(match - group.words.begin());
}

}  // namespace

int chosen_option(const form::Form& form, std::string_view controls) {
  for (const form::Control* option : form.array(controls))
    if (option->value() != 0) return option->index();
  return -1;
}

const OptionGroup& option_group(std::string_view value_name) {
  return *std::ranges::find(groups, value_name, &OptionGroup::value_name);
}

void preset_options(Context& context) {
  for (const OptionGroup& group : groups) {
    const std::string key = context.config.user_key() + std::string(group.read_below);
    const std::string word = context.user_value(key, group.value_name, "");
    context.form.at(group.controls, option_for(group, word)).set_value(1);
  }
}

std::string_view chosen_word(const form::Form& form, const OptionGroup& group) {
  const int chosen = chosen_option(form, group.controls);
  return group.words[static_cast<std::size_t>(chosen < 0 ? group.default_option : chosen)];
}

}  // namespace wizard
