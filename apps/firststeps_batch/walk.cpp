#include "apps/firststeps_batch/walk.h"

#include <fmt/core.h>

#include <algorithm>

#include "apps/console/console.h"
#include "support/encoding.h"
#include "support/file_system.h"
#include "support/text.h"

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
  // The last page was shown again, because the surroundings have changed meanwhile; the report tells of it.
  if (assistant.state() == wizard::frmAssistantFirstSteps::State::Running) assistant.click(buttons, next_button);
}

namespace {

using form::Control;
using form::Kind;

constexpr std::string_view page_container = "contstep", folder_button = "cmdPath";

[[noreturn]] void fail(const Answers& answers, const PageAnswers& page, const Answer& answer,
                       const std::string& problem) {
  throw console::InputError(
      fmt::format("{}, line {}: [{}] {}: {}", answers.file, answer.line, page.page, answer.key(), problem));
}

const Control* find_page(const form::Form& form, std::string_view name) {
  for (const Control* page : form.array(page_container)) {
    if (support::equal_ignoring_case(page->tag(), name)) return page;
  }
  return nullptr;
}

bool lies_on(const Control* control, const Control* page) {
  while (control != nullptr && control != page) control = control->parent();
  return control == page;
}

/// The control of an answer. A control array may extend over several pages; an index that belongs to another page is
/// counted within this one.
const Control* find_on_page(const form::Form& form, const Control* page, const Answer& answer) {
  const Control* direct = form.find(answer.control, answer.index);
  if (direct != nullptr && lies_on(direct, page)) return direct;
  std::vector<const Control*> members = form.array(answer.control);
  std::erase_if(members, [&](const Control* member) { return !lies_on(member, page); });
  const std::size_t position = answer.index < 0 ? 0 : static_cast<std::size_t>(answer.index);
  return position < members.size() ? members[position] : nullptr;
}

bool answered_as_group(Kind kind) { return kind == Kind::OptionButton || kind == Kind::ChartOption; }

/// What is wrong with the name of an answer; empty if nothing is.
std::string name_problem(const Control* control, const Answer& answer) {
  if (control == nullptr) return "the page has no such control";
  const bool in_array = control->index() >= 0, group = answered_as_group(control->kind());
  if (group && answer.index >= 0) return "is answered as a whole: " + control->name() + "=…";
  if (!group && in_array && answer.index < 0) return "needs the index: " + control->name() + "(0)=…";
  switch (control->kind()) {
    case Kind::OptionButton:
    case Kind::ChartOption:
    case Kind::ComboBox:
      return {};
    case Kind::TextBox:
      if (control->editable()) return {};
      break;
    case Kind::Button:
      if (support::equal_ignoring_case(control->name(), folder_button)) return {};
      break;
    default:
      break;
  }
  return "this control takes no answer";
}

bool offered(const Control* control) {
  for (; control != nullptr; control = control->parent()) {
    if (!control->visible() || !control->enabled()) return false;
  }
  return true;
}

/// Applies one answer. Each function returns what is wrong with the value; empty if it was accepted.
class Hand {
 public:
  Hand(wizard::frmAssistantFirstSteps& assistant, BatchUser& user) : assistant_(assistant), user_(user) {}

  std::string enter(Control& control, const std::string& value) {
    switch (control.kind()) {
      case Kind::TextBox:
        return type(control, value);
      case Kind::ComboBox:
        return choose_entry(control, value);
      case Kind::OptionButton:
        return choose_option(control, value);
      case Kind::ChartOption:
        return tick_charts(control, value);
      default:
        return choose_folder(control, value);
    }
  }

 private:
  std::string type(Control& control, const std::string& value) {
    const auto limit = static_cast<std::size_t>(std::max(control.maximum(), 0));
    if (support::character_count(value) > limit) return fmt::format("at most {} characters", limit);
    control.set_text(value);
    assistant_.change(control.name(), control.index());
    return {};
  }

  std::string choose_entry(Control& control, const std::string& value) {
    const auto& items = control.items();
    auto found = std::ranges::find_if(
        items, [&](const form::ListItem& item) { return support::equal_ignoring_case(item.text, value); });
    const std::optional<std::int32_t> number = support::parse_whole<std::int32_t>(value);
    if (!control.editable() && number) found = std::ranges::find(items, *number, &form::ListItem::item_data);
    if (found == items.end()) {
      if (!control.editable()) return "the list has no entry \"" + value + "\"" + entries_text(control);
      return type(control, value);
    }
    control.set_list_index(static_cast<int>(found - items.begin()));
    assistant_.click(control.name(), control.index());
    return {};
  }

  static std::string entries_text(const Control& control) {
    std::string text;
    for (const form::ListItem& item : control.items()) {
      text += fmt::format("{}{} ({})", text.empty() ? "; it has " : ", ", item.item_data, item.text);
    }
    return text;
  }

  std::string choose_option(const Control& control, const std::string& value) {
    for (Control* member : assistant_.form().array(control.name())) {
      if (std::to_string(member->index()) != value) continue;
      if (!offered(member)) return "the option " + value + " is not offered here";
      member->set_value(1);
      assistant_.click(member->name(), member->index());
      return {};
    }
    return "there is no option \"" + value + "\"";
  }

  std::string tick_charts(const Control& control, const std::string& value) {
    std::vector<std::string> keys;
    support::Split(value, keys, "|");
    std::vector<Control*> wanted;
    const std::vector<Control*> charts = assistant_.form().array(control.name());
    for (const std::string& key : keys) {
      const auto found = std::ranges::find_if(
          charts, [&](const Control* chart) { return support::equal_ignoring_case(chart->tag(), key); });
      if (found == charts.end() || key.empty()) return "there is no chart \"" + key + "\"";
      wanted.push_back(*found);
    }
    for (Control* chart : charts) {
      if (chart->value() != 0 && std::ranges::find(wanted, chart) == wanted.end()) set_tick(*chart, 0);
    }
    for (Control* chart : wanted) {
      set_tick(*chart, 1);
      if (chart->value() == 0) return "the chart " + chart->tag() + " is one too many";
    }
    return {};
  }

  void set_tick(Control& chart, int value) {
    if (chart.value() == value) return;
    chart.set_value(value);
    assistant_.click(chart.name(), chart.index());
  }

  std::string choose_folder(const Control& control, const std::string& value) {
    const support::FileSystem& files = support::host_file_system();
    const std::string folder = value.empty() ? std::string() : files.windows_path(value);
    if (folder.empty() || !files.folder_exists(folder)) return "there is no folder \"" + value + "\"";
    const std::size_t messages_before = user_.messages().size();
    user_.set_next_folder(folder);
    assistant_.click(control.name(), control.index());
    if (user_.messages().size() > messages_before) {
      throw PageRefused(assistant_.StepName(), user_.messages(), messages_before);
    }
    return {};
  }

  wizard::frmAssistantFirstSteps& assistant_;
  BatchUser& user_;
};

}  // namespace

void check_names(const form::Form& form, const Answers& answers) {
  for (const PageAnswers& page : answers.pages) {
    const Control* container = find_page(form, page.page);
    if (container == nullptr) {
      throw console::InputError(fmt::format("{}, line {}: there is no page [{}]", answers.file, page.line, page.page));
    }
    for (const Answer& answer : page.answers) {
      const std::string problem = name_problem(find_on_page(form, container, answer), answer);
      if (!problem.empty()) fail(answers, page, answer, problem);
    }
  }
}

void apply(wizard::frmAssistantFirstSteps& assistant, BatchUser& user, const Answers& answers,
           const PageAnswers& page) {
  Hand hand(assistant, user);
  const Control* container = find_page(assistant.form(), page.page);
  for (const Answer& answer : page.answers) {
    const Control* found = find_on_page(assistant.form(), container, answer);
    if (found == nullptr) fail(answers, page, answer, "the page has no such control");
    Control& control = assistant.form().at(found->name(), found->index());
    if (!answered_as_group(control.kind()) && !offered(&control)) fail(answers, page, answer, "is not offered here");
    const std::string problem = hand.enter(control, answer.value);
    if (!problem.empty()) fail(answers, page, answer, problem);
  }
}

}  // namespace firststeps_batch
