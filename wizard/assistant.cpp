#include "wizard/assistant.h"

#include <array>

#include "support/encoding.h"
#include "support/error.h"
#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/finish.h"
#include "wizard/form/apply_texts.h"
#include "wizard/form/form.h"
#include "wizard/form_layout.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/presets.h"
#include "wizard/start_up.h"

namespace wizard {

struct frmAssistantFirstSteps::Run {
  explicit Run(Ports ports) : context{std::move(ports), {}, {}, {}}, pages(context) {}

  Context context;
  Pages pages;
  std::string StepName;
  State state = State::Running;
  FinishReport report;
  Findings shown_findings;

  bool load(std::string_view command_line);
  void dress_form();
  bool may_leave_page();
  void show_step();
  void show_page(const Page* page);
  void find_on_page();
  void tell_pages(std::span<const PageEvent> Page::*events, std::string_view control, int index);
  void finish();

  void navigate(int button);
  void next();
  void back();
  void cancel();
  void explain(int page);
};

namespace {

constexpr std::uint32_t blue = 0xFF0000;
constexpr long next_caption = 905, finish_caption = 908, welcome = 4651, cancel_question = 693;
// The professional edition has another introduction: it creates a missing patient index at once.
constexpr long shared_index_intro = 4819;
constexpr long step_of_steps = 4920;

/// The heading of the step's page; the last step is the last page, whatever the list calls it.
std::string step_name(const Context& context, const StepList& steps, int position) {
  const Page* page = find_page(position == steps.last() ? "Fertig" : steps.name_at(position));
  if (!page) return steps.name_at(position);
  const form::Control* heading = context.form.find("lblHeading", page_index(*page));
  return (heading ? *heading : context.form.at("Label2")).caption();
}

/// Shows in `lstSteps` the names of the pages without those that are passed over, and where among them the user is.
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

}  // namespace

bool frmAssistantFirstSteps::Run::load(std::string_view command_line) {
  build_form(context.form);
  if (!discover_installation(context, command_line)) return false;
  support::Procedure procedure{"wizard!Form_Load"};
  procedure.step([&] { dress_form(); });
  build_and_preset(context, pages);
  procedure.step([&] { show_step(); });
  return true;
}

void frmAssistantFirstSteps::Run::dress_form() {
  InstallationConfig& config = context.config;
  form::apply_texts(context.form, config.LanguageObject.get(), config.DefaultFont);
  context.ports.user->set_topmost(true);
  context.form.at("Label2").set_caption(config.text(welcome, {config.Productname}));
  if (config.ProEdition && config.LanguageObject) context.show_text(context.form.at("lblIntro"), shared_index_intro);
  form::SetProgressbarColor(context.form.at("pbar"), blue);
}

void frmAssistantFirstSteps::Run::show_step() {
  form::Form& form = context.form;
  StepList& steps = pages.steps;
  if (steps.current() > steps.last()) return finish();
  StepName = steps.name_at(steps.current());
  const bool on_last = steps.current() == steps.last();
  if (on_last) StepName = "Fertig";
  context.show_text(form.at("Command1", 0), on_last ? finish_caption : next_caption);
  form.at("Command1", 1).set_enabled(steps.current() != 0);
  form.at("pbar").set_value(steps.current());
  show_steps(context, steps);
  const Page* page = find_page(StepName);
  if (page && page->enter) page->enter(context, pages);
  show_page(page);
  find_on_page();
  start_animation(form, find_page(steps.name_at(steps.current())));
}

/// If `page` is null, no page is shown.
void frmAssistantFirstSteps::Run::show_page(const Page* page) {
  for (form::Control* container : context.form.array("contstep"))
    container->set_visible(page && container->tag() == page->tag);
  const Illustration illustration = page ? page->illustration : Illustration::Other;
  context.form.at("Image1").set_picture(std::to_string(static_cast<int>(illustration)));
}

void frmAssistantFirstSteps::Run::finish() {
  const FinishProgress progress(context);
  report = apply_configuration(context, pages.summary.choices(), FinishWriter::Mode::Write);
  state = State::Finished;
  if (report.complete()) pages.summary.show_outcome(report);
}

bool frmAssistantFirstSteps::Run::may_leave_page() {
  const Page* page = find_page(StepName);
  return !page || !page->leave || page->leave(context, pages);
}

void frmAssistantFirstSteps::Run::next() {
  StepList& steps = pages.steps;
  if (steps.current() == steps.last() && !pages.summary.still_holds(pages)) return;
  do {
    // Behind the last page nothing is checked: the finish starts whatever the page holds.
    const bool nothing_follows = steps.name_at(steps.current() + 1).empty();
    if (!nothing_follows && !may_leave_page()) break;
    steps.forward();
    StepName = steps.name_at(steps.current());
    // On the way back to the last page, the pages in between are checked but not shown, unless one of them refuses.
  } while (pages.returns_to_summary && steps.current() < steps.last());
  show_step();
}

void frmAssistantFirstSteps::Run::back() {
  pages.returns_to_summary = false;
  pages.steps.back();
  show_step();
}

void frmAssistantFirstSteps::Run::cancel() {
  if (context.message(cancel_question, message_style::yes_no_system_modal) == yes_button) state = State::Cancelled;
}

/// Shows why the page asks for its data.
void frmAssistantFirstSteps::Run::explain(int page) {
  if (page < 0 || page >= static_cast<int>(all_pages().size())) return;
  const long why = all_pages()[static_cast<std::size_t>(page)]->why;
  if (why != 0) context.message(why, message_style::information_foreground);
}

void frmAssistantFirstSteps::Run::navigate(int button) {
  static constexpr std::array buttons{&Run::next, &Run::back, &Run::cancel};
  if (button < 0 || button >= static_cast<int>(buttons.size())) return;
  const auto handler = buttons[static_cast<std::size_t>(button)];
  (this->*handler)();
}

/// Raises the event on every page that handles it for this control; without such a page, nothing happens.
void frmAssistantFirstSteps::Run::tell_pages(std::span<const PageEvent> Page::*events, std::string_view control,
                                             int index) {
  const int step = pages.steps.current();
  for (const Page* page : all_pages())
    for (const PageEvent& event : page->*events)
      if (support::equal_ignoring_case(event.control, control)) event.handle(context, pages, index);
  if (pages.steps.current() != step) return show_step();
  show_steps(context, pages.steps);
  find_on_page();
}

/// Finds what is to be said about the page that is shown; the form's window shows each finding at its field.
void frmAssistantFirstSteps::Run::find_on_page() {
  const Page* page = find_page(StepName);
  shown_findings = page ? wizard::page_findings(context, pages, gather_pages(context, pages), *page) : Findings();
}

frmAssistantFirstSteps::frmAssistantFirstSteps(Ports ports) : run_(std::make_unique<Run>(std::move(ports))) {}
frmAssistantFirstSteps::~frmAssistantFirstSteps() = default;

bool frmAssistantFirstSteps::load(std::string_view command_line) {
  bool started = false;
  support::Procedure{"wizard!Load"}.step([&] { started = run_->load(command_line); });
  return started;
}

void frmAssistantFirstSteps::click(std::string_view control, int index) {
  if (state() != State::Running) return;
  support::Procedure{"wizard!Click"}.step([&] {
    if (support::equal_ignoring_case(control, "Command1")) return run_->navigate(index);
    if (support::equal_ignoring_case(control, "cmdWhy")) return run_->explain(index);
    run_->tell_pages(&Page::clicks, control, index);
  });
}

void frmAssistantFirstSteps::change(std::string_view control, int index) {
  if (state() != State::Running) return;
  support::Procedure{"wizard!Change"}.step([&] { run_->tell_pages(&Page::changes, control, index); });
}

void frmAssistantFirstSteps::focus(std::string_view control, int index) {
  if (state() != State::Running) return;
  support::Procedure{"wizard!Focus"}.step([&] { run_->tell_pages(&Page::focuses, control, index); });
}

void frmAssistantFirstSteps::tick() {
  if (state() != State::Running) return;
  const StepList& steps = run_->pages.steps;
  support::Procedure{"wizard!Timer1_Tick"}.step(
      [&] { advance_animation(run_->context, find_page(steps.name_at(steps.current()))); });
}

void frmAssistantFirstSteps::help() {
  const Context& context = run_->context;
  if (state() != State::Running) return;
  support::Procedure{"wizard!Help"}.step([&] {
    if (support::file_test(*context.ports.files, context.config.Helpfile))
      context.ports.user->open_file(context.config.Helpfile);
  });
}

form::Form& frmAssistantFirstSteps::form() noexcept { return run_->context.form; }

const InstallationConfig& frmAssistantFirstSteps::config() const noexcept { return run_->context.config; }
const std::vector<std::string>& frmAssistantFirstSteps::StepNames() const noexcept { return run_->pages.steps.names(); }
int frmAssistantFirstSteps::CurrentStep() const noexcept { return run_->pages.steps.current(); }
int frmAssistantFirstSteps::LastStep() const noexcept { return run_->pages.steps.last(); }
const std::string& frmAssistantFirstSteps::StepName() const noexcept { return run_->StepName; }
frmAssistantFirstSteps::State frmAssistantFirstSteps::state() const noexcept { return run_->state; }
const Findings& frmAssistantFirstSteps::findings() const noexcept { return run_->pages.summary.findings(); }
const FinishReport& frmAssistantFirstSteps::report() const noexcept { return run_->report; }

const Findings& frmAssistantFirstSteps::page_findings() const noexcept { return run_->shown_findings; }

FinishReport frmAssistantFirstSteps::preview() const {
  return apply_configuration(run_->context, gather_choices(run_->context, run_->pages), FinishWriter::Mode::Preview);
}

}  // namespace wizard
