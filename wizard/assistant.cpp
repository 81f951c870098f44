#include "wizard/assistant.h"

#include <algorithm>
#include <array>

#include "support/encoding.h"
#include "support/error.h"
#include "wizard/animation.h"
#include "wizard/context.h"
#include "wizard/finish.h"
#include "wizard/folder_page.h"
#include "wizard/form/apply_texts.h"
#include "wizard/form/progress_colour.h"
#include "wizard/form_layout.h"
#include "wizard/page_display.h"
#include "wizard/pages.h"
#include "wizard/patient_page.h"
#include "wizard/presets.h"
#include "wizard/start_up.h"
#include "wizard/summary_page.h"
#include "wizard/therapy_kind.h"

namespace wizard {

struct frmAssistantFirstSteps::Run {
  explicit Run(Ports ports) : context{std::move(ports), {}, {}, {}}, pages(context) {}

  Context context;
  Pages pages;
  std::string StepName;
  State state = State::Running;
  FinishReport report;

  bool load(std::string_view command_line);
  void dress_form();
  bool may_leave_page();
  void show_step();
  void finish();

  // Handlers, each with the index of the control.
  void navigate(int button);
  void next();
  void back();
  void cancel();
  void choose_unit(int option);
  void choose_sidebar(int option);
  void choose_style(int option);
  void choose_therapy(int);
  void choose_scheme(int);
  void choose_path(int button) { choose_folder(context, button); }
  void choose_chart(int option) { pages.charts.click(option); }
  void view_chart(int) { pages.charts.open_screenshot(); }
  void scroll_charts(int) { pages.charts.scroll(); }
};

namespace {

constexpr std::uint32_t blue = 0xFF0000;
constexpr long next_caption = 905, finish_caption = 908, welcome = 4651, cancel_question = 693;

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
  if (config.LanguageObject) context.form.at("Label2").set_caption(config.text(welcome, {config.Productname}));
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
  if (support::equal_ignoring_case(StepName, "pics")) {
    pages.charts.build();
    steps.mark_built(steps.current());
  }
  show_style_preview(form);
  form.at("Command1", 1).set_enabled(steps.current() != 0);
  form.at("pbar").set_value(steps.current());
  if (on_last) show_summary(context, pages);
  show_page(form, StepName);
  show_illustration(form);
  start_animation(form, steps.name_at(steps.current()));
}

void frmAssistantFirstSteps::Run::finish() {
  report = apply_configuration(context, pages, FinishWriter::Mode::Write);
  state = State::Finished;
}

bool frmAssistantFirstSteps::Run::may_leave_page() {
  if (support::equal_ignoring_case(StepName, "PATDAT")) return check_patient(context);
  if (support::equal_ignoring_case(StepName, "THERAPIE_BZ")) return pages.targets.check_glucose();
  return true;
}

void frmAssistantFirstSteps::Run::next() {
  // Behind the last page there is nothing to check for: the finish starts whatever the page says.
  const bool nothing_follows = pages.steps.name_at(pages.steps.current() + 1).empty();
  if (nothing_follows || may_leave_page()) pages.steps.forward();
  show_step();
}

void frmAssistantFirstSteps::Run::back() {
  pages.steps.back();
  show_step();
}

void frmAssistantFirstSteps::Run::cancel() {
  if (context.message(cancel_question, message_style::yes_no_system_modal) == yes_button) state = State::Cancelled;
}

void frmAssistantFirstSteps::Run::navigate(int button) {
  static constexpr std::array buttons{&Run::next, &Run::back, &Run::cancel};
  if (button < 0 || button >= static_cast<int>(buttons.size())) return;
  const auto handler = buttons[static_cast<std::size_t>(button)];
  (this->*handler)();
}

void frmAssistantFirstSteps::Run::choose_unit(int option) {
  if (option == 0 || option == 1) pages.targets.change_unit(GlucoseUnit{static_cast<std::int16_t>(option)});
}

void frmAssistantFirstSteps::Run::choose_sidebar(int option) {
  form::Control& picture = context.form.at("imgSidebar");
  picture.set_visible(option == 1);
  context.form.request_redraw(picture);
}

void frmAssistantFirstSteps::Run::choose_style(int) { show_style_preview(context.form); }
void frmAssistantFirstSteps::Run::choose_therapy(int) { choose_therapy_kind(context, pages.steps); }
void frmAssistantFirstSteps::Run::choose_scheme(int) { pages.scheme.show_description(); }

frmAssistantFirstSteps::frmAssistantFirstSteps(Ports ports) : run_(std::make_unique<Run>(std::move(ports))) {}
frmAssistantFirstSteps::~frmAssistantFirstSteps() = default;

bool frmAssistantFirstSteps::load(std::string_view command_line) {
  bool started = false;
  support::Procedure{"wizard!Load"}.step([&] { started = run_->load(command_line); });
  return started;
}

void frmAssistantFirstSteps::click(std::string_view control, int index) {
  struct Event {
    std::string_view control;
    void (Run::*handler)(int index);
  };
  static constexpr Event events[] = {
      {"Command1", &Run::navigate},
      {"optBGUnit", &Run::choose_unit},
      {"optShowSideBar", &Run::choose_sidebar},
      {"optDisplayStyle", &Run::choose_style},
      {"cbTherapie", &Run::choose_therapy},
      {"cbSchema", &Run::choose_scheme},
      {"cmdPath", &Run::choose_path},
      {"optThumb", &Run::choose_chart},
      {"cmdViwPic", &Run::view_chart},
  };
  const auto event = std::ranges::find_if(
      events, [&](const Event& row) { return support::equal_ignoring_case(row.control, control); });
  if (event == std::end(events) || state() != State::Running) return;
  support::Procedure{"wizard!Click"}.step([&] { (run_.get()->*event->handler)(index); });
}

void frmAssistantFirstSteps::change(std::string_view control, int index) {
  if (state() != State::Running || !support::equal_ignoring_case(control, "vsbSlide")) return;
  support::Procedure{"wizard!Change"}.step([&] { run_->scroll_charts(index); });
}

void frmAssistantFirstSteps::tick() {
  if (state() != State::Running) return;
  const StepList& steps = run_->pages.steps;
  support::Procedure{"wizard!Timer1_Tick"}.step(
      [&] { advance_animation(run_->context, steps.name_at(steps.current())); });
}

form::Form& frmAssistantFirstSteps::form() noexcept { return run_->context.form; }

const InstallationConfig& frmAssistantFirstSteps::config() const noexcept { return run_->context.config; }
const std::vector<std::string>& frmAssistantFirstSteps::StepNames() const noexcept { return run_->pages.steps.names(); }
int frmAssistantFirstSteps::CurrentStep() const noexcept { return run_->pages.steps.current(); }
int frmAssistantFirstSteps::LastStep() const noexcept { return run_->pages.steps.last(); }
const std::string& frmAssistantFirstSteps::StepName() const noexcept { return run_->StepName; }
frmAssistantFirstSteps::State frmAssistantFirstSteps::state() const noexcept { return run_->state; }
const FinishReport& frmAssistantFirstSteps::report() const noexcept { return run_->report; }

FinishReport frmAssistantFirstSteps::preview() const {
  return apply_configuration(run_->context, run_->pages, FinishWriter::Mode::Preview);
}

}  // namespace wizard
