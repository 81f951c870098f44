#include "wizard/option_groups.h"

#include <algorithm>

#include "support/encoding.h"
#include "wizard/page_list.h"

namespace wizard {

namespace {

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

std::vector<const OptionGroup*> option_groups() {
  std::vector<const OptionGroup*> groups;
  for (const Page* page : all_pages())
    for (const OptionGroup& group : page->options) groups.push_back(&group);
  std::ranges::sort(groups, {}, &OptionGroup::order);
  return groups;
}

void preset_options(Context& context) {
  for (const OptionGroup* group : option_groups()) {
    const std::string key = context.config.user_key() + std::string(group->read_below);
    const std::string word = context.user_value(key, group->value_name, "");
    context.form.at(group->controls, option_for(*group, word)).set_value(1);
  }
}

int written_option(const form::Form& form, const OptionGroup& group) {
  const int chosen = chosen_option(form, group.controls);
  return chosen < 0 ? group.default_option : chosen;
}

}  // namespace wizard
