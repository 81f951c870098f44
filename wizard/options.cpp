#include "wizard/options.h"

#include <algorithm>

#include "support/encoding.h"

namespace wizard {

namespace {

// "OutlookStyle" and, in the standard edition, "RunOnStart" have no page in the usual lists. They are preset all the
// same, so that the finish writes back what it found.
constexpr OptionChoice choices[] = {
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

int option_for(const OptionChoice& choice, std::string_view word) {
  const auto match = std::ranges::find_if(choice.words, [&](std::string_view candidate) {
    return !candidate.empty() && support::equal_ignoring_case(candidate, word);
  });
  return match == choice.words.end() ? choice.default_option : static_cast<int>(match - choice.words.begin());
}

}  // namespace

int selected_option(const form::Form& form, std::string_view options) {
  for (const form::Control* option : form.array(options))
    if (option->value() != 0) return option->index();
  return -1;
}

const OptionChoice& option_choice(std::string_view value_name) {
  return *std::ranges::find(choices, value_name, &OptionChoice::value_name);
}

void preset_options(Context& context) {
  for (const OptionChoice& choice : choices) {
    const std::string key = context.config.user_key() + std::string(choice.read_below);
    const std::string word = context.user_value(key, choice.value_name, "");
    context.form.at(choice.options, option_for(choice, word)).set_value(1);
  }
}

std::string_view chosen_word(const form::Form& form, const OptionChoice& choice) {
  const int selected = selected_option(form, choice.options);
  return choice.words[static_cast<std::size_t>(selected < 0 ? choice.default_option : selected)];
}

}  // namespace wizard
