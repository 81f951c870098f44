#include "wizard/steps_shown.h"

#include "wizard/page_list.h"

namespace wizard {

namespace {

constexpr long step_of_steps = 4920;

/// The heading of the step's page; the last step is the last page, whatever the list calls it.
std::string step_name(const Context& context, const StepList& steps, int position) {
  const Page* page = find_page(position == steps.last() ? "Fertig" : steps.name_at(position));
  if (!page) return steps.name_at(position);
  const form::Control* heading = context.form.find("lblHeading", page_index(*page));
  return (heading ? *heading : context.form.at("Label2")).caption();
}

}  // namespace

void show_steps(Context& context, const StepList& steps) {
  std::vector<form::ListItem> items;
  int current = -1;
  for (int position = 0; position <= steps.last(); ++position) {
    if (position != steps.current() && steps.passed_over(position)) continue;
    if (position == steps.current()) current = static_cast<int>(items.size());
    items.push_back({step_name(context, steps, position), position});
  }
  form::Control& list = context.form.at("lstSteps");
  const std::string name = current < 0 ? std::string() : items[static_cast<std::size_t>(current)].text;
  list.set_caption(
      context.config.text(step_of_steps, {std::to_string(current + 1), std::to_string(items.size()), name}));
  if (list.items() != items) list.set_items(std::move(items));
  list.set_list_index(current);
}

}  // namespace wizard
