#include "apps/firststeps_batch/walk.h"

#include <algorithm>

#include "apps/firststeps_batch/answer_controls.h"
#include "apps/firststeps_batch/page_refused.h"
#include "support/encoding.h"

namespace firststeps_batch {
namespace {

constexpr std::string_view buttons = "Command1";
constexpr int next_button = 0;

const PageAnswers* find_answers(const Answers& answers, std::string_view page) {
  const auto found = std::ranges::find_if(
      answers.pages, [&](const PageAnswers& other) { return support::equal_ignoring_case(other.page, page); });
  return found == answers.pages.end() ? nullptr : &*found;
}

}  // namespace

std::vector<std::string> walk_to_last_page(wizard::frmAssistantFirstSteps& assistant, BatchUser& user,
                                           const Answers& answers) {
  std::vector<std::string> unused(answers.pages.size());
  std::ranges::transform(answers.pages, unused.begin(), &PageAnswers::page);
  for (;;) {
    const std::string page = assistant.StepName();
    if (const PageAnswers* answered = find_answers(answers, page)) {
      apply(assistant, user, answers, *answered);
      std::erase(unused, answered->page);
    }
    const int step = assistant.CurrentStep();
    if (step >= assistant.LastStep()) break;
    const std::size_t messages = user.messages().size();
    assistant.click(buttons, next_button);
    if (assistant.CurrentStep() <= step) throw PageRefused(page, user.messages(), messages);
  }
  return unused;
}

void finish(wizard::frmAssistantFirstSteps& assistant) {
  assistant.click(buttons, next_button);
  // Shown once more, because the surroundings have changed since: the report tells of it.
  if (assistant.state() == wizard::frmAssistantFirstSteps::State::Running) assistant.click(buttons, next_button);
}

}  // namespace firststeps_batch
