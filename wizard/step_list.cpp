#include "wizard/step_list.h"

#include "support/encoding.h"
#include "support/text.h"

namespace wizard {

void StepList::choose(std::string_view steps) {
  names_.clear();
  support::Split(steps, names_, "|");
  current_ = 0;
  built_ = -1;
}

std::string StepList::name_at(int position) const {
  return position < 0 || position > last() ? std::string() : names_[static_cast<std::size_t>(position)];
}

bool StepList::passed_over(int position) const {
  return position != built_ && name_at(position).find('-') != std::string::npos;
}

void StepList::forward() {
  do ++current_;
  while (passed_over(current_));
}

void StepList::back() {
  while (current_ > 0)
    if (!passed_over(--current_)) break;
}

int StepList::find(std::string_view page) const {
  const std::size_t characters = support::character_count(page);
  for (int position = 0; position <= last(); ++position)
    if (support::equal_ignoring_case(support::first_characters(name_at(position), characters), page)) return position;
  return -1;
}

bool StepList::offers(std::string_view page) const {
  const int position = find(page);
  return position >= 0 && !passed_over(position);
}

void StepList::offer(std::string_view page, bool offered) {
  const int position = find(page);
  if (position < 0) return;
  names_[static_cast<std::size_t>(position)] = std::string(page) + (offered ? "" : "-");
}

void StepList::mark_built(int position) {
  if (position < 0 || position > last()) return;
  names_[static_cast<std::size_t>(position)] += "-";
  built_ = position;
}

}  // namespace wizard
