#include "wizard/summary_lines.h"

#include "support/text.h"

namespace wizard {

std::string named_list(const Context& context, const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    list += (list.empty() ? "" : ", ") + name;
  }
  return list.empty() ? context.config.text(nothing_chosen) : list;
}

std::vector<std::string> option_line(const Context& context, const Choices& choices, long number,
                                     std::string_view controls) {
  const form::Control& option = context.form.at(controls, choices.option(controls));
  return {context.config.text(number, {plain_caption(option.caption())})};
}

std::string plain_caption(std::string caption) {
  support::replace(caption, "&", "");
  for (const std::string_view end : {":", " *"})
    if (caption.ends_with(end)) caption.resize(caption.size() - end.size());
  return caption;
}

}  // namespace wizard
