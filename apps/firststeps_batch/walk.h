// Walks the wizard's pages up to the last page. It puts answers into the form's controls as a user would: it sets the
// control, then raises its event. The form of a value depends on the kind of control:
//
//   text box           name=text                    option buttons   name=index of the chosen one
//   drop-down list     name=item data, or its text  charts           name=key|key, all others unticked
//   list with text     name=any text                folder button    name(index)=folder, a host path
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "apps/firststeps_batch/answers.h"
#include "apps/firststeps_batch/batch_user.h"
#include "wizard/assistant.h"

namespace firststeps_batch {

/// Raises console::InputError for the first page or control that the form does not have, and for a control that takes
/// no answer.
void check_names(const form::Form& form, const Answers& answers);

/// Applies the answers of the page that is shown, in their order. Raises console::InputError for a value that its
/// control does not accept, and for a control that is hidden or disabled at that moment; PageRefused if the page
/// refuses.
void apply(wizard::frmAssistantFirstSteps& assistant, BatchUser& user, const Answers& answers, const PageAnswers& page);

/// A page refused its answers. The run ends and nothing was written.
class PageRefused : public std::runtime_error {
 public:
  /// The page's messages are those from `first` on.
  PageRefused(const std::string& page, const std::vector<std::string>& messages, std::size_t first)
      : std::runtime_error(text(page, messages, first)) {}

 private:
  static std::string text(const std::string& page, const std::vector<std::string>& messages, std::size_t first) {
    std::string text = "The page " + page + " refuses its answers";
    for (std::size_t i = first; i < messages.size(); ++i) text += (i == first ? ": " : " ") + messages[i];
    return text;
  }
};

/// Answers each page when it is shown and presses Next, until the last page is answered. Nothing is written yet.
/// Returns the pages of the file that were not shown. Raises PageRefused with page and message, and console::InputError
/// for a wrong answer.
std::vector<std::string> walk_to_last_page(wizard::frmAssistantFirstSteps& assistant, BatchUser& user,
                                           const Answers& answers);

/// Presses Next on the last page, which runs the finish.
void finish(wizard::frmAssistantFirstSteps& assistant);

}  // namespace firststeps_batch
