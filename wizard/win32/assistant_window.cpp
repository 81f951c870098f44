#include "wizard/win32/assistant_window.h"

#include <algorithm>
#include <utility>

#include "support/win32/wide.h"
#include "wizard/form_layout.h"
#include "wizard/win32/chart_option.h"
#include "wizard/win32/container_window.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/focus.h"
#include "wizard/win32/frame_window.h"
#include "wizard/win32/page_images.h"

namespace wizard::win32 {
namespace {

constexpr UINT_PTR timer_id = 1;
/// Beside the text of a field, in twips.
constexpr std::int32_t text_margin = 45;

/// What a new window is told, in this order: a list before what is selected in it, the page before what lies on it.
constexpr form::Property told_to_new_window[] = {
    form::Property::Font,    form::Property::List,      form::Property::Maximum, form::Property::Colours,
    form::Property::Text,    form::Property::ListIndex, form::Property::Value,   form::Property::Enabled,
    form::Property::Picture, form::Property::Visible,
};

/// What a new window shows without being told; the first page waits for every message.
bool shows_from_the_start(const form::Control& control, form::Property property) {
  switch (property) {
    case form::Property::Font:
      return is_container(control) || control.kind() == form::Kind::Image;
    case form::Property::Text:
      return control.kind() != form::Kind::ComboBox;
    case form::Property::Value:
      return control.value() == 0;
    case form::Property::Enabled:
      return control.enabled();
    case form::Property::Visible:
      return !control.visible();
    default:
      return false;
  }
}

bool is_page(const form::Control& control) { return control.parent() == nullptr && is_container(control); }

/// A chart below what its frame shows at first.
bool can_wait(const form::Control& control) {
  if (control.kind() != form::Kind::ChartOption || control.parent() == nullptr) return false;
  const form::Control* frame = control.parent()->parent();
  return frame != nullptr && control.bounds().top >= frame->bounds().height;
}

}  // namespace

AssistantWindow::AssistantWindow(HINSTANCE instance, frmAssistantFirstSteps& assistant)
    : assistant_(assistant), controls_(assistant.form()) {
  register_container_class(instance);
  window_ = create_frame_window(instance, support::wide(assistant_.form().caption()).c_str(), dialog_procedure, this);
  dpi_ = GetDpiForWindow(window_);
  const RECT inner = pixels(form_bounds, dpi_);
  centre_frame_window(window_, {inner.right, inner.bottom});
  for (const auto& control : assistant_.form().controls()) controls_.add(*control);
  for (const auto& shown : controls_) {
    if (shown->control->kind() == form::Kind::Timer) show_timer(*shown->control);
    if (shown->control->parent() == nullptr && (shown->control->visible() || !is_page(*shown->control))) create(*shown);
    if (shown->window == nullptr) waiting_.push_back(shown.get());
  }
  assistant_.form().set_observer(this);
  SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  focus_first_of_page();
  RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

AssistantWindow::~AssistantWindow() {
  assistant_.form().set_observer(nullptr);
  if (window_ != nullptr) DestroyWindow(window_);
}

void AssistantWindow::run() {
  MSG message;
  while (next_message(message)) {
    if (IsDialogMessageW(window_, &message) != 0) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

/// Pictures, charts and the pages that are not shown yet come in one by one while there is nothing else to do, so
/// that the page that is shown answers at once.
bool AssistantWindow::next_message(MSG& message) {
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == 0) {
    if (!work_ahead()) return GetMessageW(&message, nullptr, 0, 0) > 0;
  }
  return message.message != WM_QUIT;
}

void AssistantWindow::create(ShownControl& shown) {
  controls_.create_window(shown, window_, dpi_);
  if (shown.window == nullptr) return;
  if (shown.control->kind() == form::Kind::ChartOption) draw_as_chart(shown.window, pixels(chart_title_height, dpi_));
  for (const form::Property property : told_to_new_window) {
    if (!shows_from_the_start(*shown.control, property)) show(shown, property);
  }
  tips_.add(shown);
}

/// Tab goes through the page before it comes to the buttons.
void AssistantWindow::create_page(ShownControl& page) {
  create(page);
  SetWindowPos(page.window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

/// What lies on a page is there when the page is shown, whether or not there was time to create it before.
void AssistantWindow::create_contents(const form::Control& page) {
  for (const auto& shown : controls_) {
    if (shown->window != nullptr || shown->control == &page || &outermost(*shown->control) != &page) continue;
    if (can_wait(*shown->control)) {
      waiting_.push_back(shown.get());
    } else {
      create(*shown);
    }
  }
}

void AssistantWindow::show(const ShownControl& shown, form::Property property) {
  const form::Control& control = *shown.control;
  const bool nested = std::exchange(showing_, true);
  switch (property) {
    case form::Property::Font:
      give_font(shown);
      break;
    case form::Property::Bounds:
      place(shown, dpi_);
      if (control.kind() == form::Kind::ScrollBar) show_property(shown.window, control, form::Property::Maximum);
      break;
    case form::Property::Picture:
      show_picture(*controls_.of(control));
      break;
    case form::Property::Visible:
      if (control.visible() && is_page(control)) create_contents(control);
      show_property(shown.window, control, property);
      break;
    default:
      show_property(shown.window, control, property);
      if (property == form::Property::Value && control.value() != 0) give_tab_stop(control);
      break;
  }
  showing_ = nested;
}

/// Tab goes to the chosen one of a group of options, not to the first one too.
void AssistantWindow::give_tab_stop(const form::Control& chosen) {
  if (chosen.kind() != form::Kind::OptionButton) return;
  for (const form::Control* member : assistant_.form().array(chosen.name())) {
    const ShownControl* shown = controls_.of(*member);
    if (shown == nullptr || shown->window == nullptr) continue;
    const LONG_PTR style = GetWindowLongPtrW(shown->window, GWL_STYLE) & ~LONG_PTR{WS_TABSTOP};
    SetWindowLongPtrW(shown->window, GWL_STYLE, member == &chosen ? style | WS_TABSTOP : style);
  }
}

void AssistantWindow::show_timer(const form::Control& timer) {
  KillTimer(window_, timer_id);
  if (timer.interval() > 0) SetTimer(window_, timer_id, static_cast<UINT>(timer.interval()), nullptr);
}

/// A page does not wait for its pictures. Until the new one is there, the old one is seen.
void AssistantWindow::show_picture(ShownControl& shown) {
  if (std::exchange(shown.picture_to_load, true)) return;
  without_picture_.push_back(&shown);
}

void AssistantWindow::load_picture(ShownControl& shown) {
  shown.picture_to_load = false;
  Picture picture = pictures_.load(shown.control->picture());
  if (shown.control->kind() == form::Kind::ChartOption) return set_thumbnail(shown.window, std::move(picture));
  shown.picture = std::move(picture);
  redraw_images_around(*shown.control, controls_);
}

bool AssistantWindow::load_next_picture(bool ahead) {
  const auto next = std::ranges::find_if(
      without_picture_, [ahead](const ShownControl* shown) { return ahead || is_seen(*shown->control); });
  if (next == without_picture_.end()) return false;
  ShownControl& shown = **next;
  without_picture_.erase(next);
  load_picture(shown);
  return true;
}

void AssistantWindow::give_font(const ShownControl& shown) {
  const HFONT font = fonts_.font(shown.control->font(), text_style(*shown.control), dpi_);
  SendMessageW(shown.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  if (shown.control->kind() != form::Kind::TextBox) return;
  const auto margin = static_cast<WORD>(pixels(text_margin, dpi_));
  SendMessageW(shown.window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, margin));
}

bool AssistantWindow::work_ahead() {
  if (load_next_picture(false) || tips_.create(window_)) return true;
  if (waiting_.empty()) return load_next_picture(true);
  ShownControl& shown = *waiting_.front();
  waiting_.pop_front();
  if (shown.window == nullptr) is_page(*shown.control) ? create_page(shown) : create(shown);
  return true;
}

void AssistantWindow::change_resolution(UINT dpi, const RECT& suggested) {
  dpi_ = dpi;
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  for (const auto& shown : controls_) {
    if (shown->window == nullptr) continue;
    give_font(*shown);
    if (shown->control->kind() == form::Kind::ChartOption)
      draw_as_chart(shown->window, pixels(chart_title_height, dpi_));
    place(*shown, dpi_);
  }
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void AssistantWindow::property_changed(const form::Control& control, form::Property property) {
  if (property == form::Property::Interval) return show_timer(control);
  ShownControl* shown = controls_.of(control);
  if (shown != nullptr && shown->window == nullptr && is_page(control) && control.visible()) return create_page(*shown);
  if (shown == nullptr || shown->window == nullptr) return;
  // What is being typed is shown already; showing it again would move the caret.
  const bool shown_already =
      being_read_ == &control && (property == form::Property::Text || property == form::Property::ListIndex);
  if (!shown_already) show(*shown, property);
  if (control.kind() == form::Kind::Image) redraw_images_around(control, controls_);
}

void AssistantWindow::control_added(const form::Control& control) {
  ShownControl& shown = controls_.add(control);
  if (outermost(control).visible()) create(shown);
}

void AssistantWindow::focus_requested(const form::Control& control) {
  focus_asked_for_ = true;
  focus(control);
}

void AssistantWindow::redraw_requested(const form::Control& control) {
  if (const ShownControl* shown = controls_.of(control))
    RedrawWindow(shown->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void AssistantWindow::focus(const form::Control& control) {
  const ShownControl* shown = controls_.of(control);
  if (shown != nullptr && shown->window != nullptr)
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(shown->window), TRUE);
}

void AssistantWindow::focus_first_of_page() {
  if (const form::Control* first = first_field(assistant_.form())) focus(*first);
}

void AssistantWindow::command(HWND child, UINT notification) {
  const ShownControl* shown = controls_.of(child);
  if (showing_ || shown == nullptr) return;
  if (shown->control->kind() == form::Kind::ChartOption && notification == BN_SETFOCUS)
    return bring_into_view(*shown->control);
  being_read_ = shown->control;
  const std::optional<FormEvent> event = event_of_command(*shown, notification);
  being_read_ = nullptr;
  if (event) raise(*event);
}

void AssistantWindow::raise(const FormEvent& event) {
  const form::Control& control = *event.control;
  if (event.kind == FormEvent::Kind::Change) return assistant_.change(control.name(), control.index());
  // Long work lets input through; a second click must not begin the same work inside the first.
  if (std::exchange(in_event_, true)) return;
  const int step_before = assistant_.CurrentStep();
  focus_asked_for_ = false;
  assistant_.click(control.name(), control.index());
  in_event_ = false;
  if (assistant_.state() != frmAssistantFirstSteps::State::Running) {
    DestroyWindow(window_);
  } else if (assistant_.CurrentStep() != step_before) {
    if (!focus_asked_for_) focus_first_of_page();
    // The page comes up in one go.
    RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
}

/// The cross of the frame is the button Cancel.
void AssistantWindow::close() {
  if (form::Control* cancel = assistant_.form().find("Command1", 2)) raise({FormEvent::Kind::Click, cancel});
}

void AssistantWindow::scroll(form::Control& bar, int request, int thumb) {
  raise(event_of_scroll(bar, request, thumb));
}

/// The wheel turns the scroll bar of the page that is shown, wherever the pointer is. Fine wheels report parts of a
/// notch.
void AssistantWindow::turn_wheel(int delta) {
  constexpr int lines = 3;
  wheel_rest_ += delta * lines;
  const int turned = wheel_rest_ / WHEEL_DELTA;
  wheel_rest_ -= turned * WHEEL_DELTA;
  for (const auto& shown : controls_) {
    form::Control& control = *shown->control;
    if (control.kind() != form::Kind::ScrollBar || !control.enabled() || !is_seen(control)) continue;
    for (int line = 0; line < std::abs(turned); ++line) scroll(control, turned > 0 ? SB_LINEUP : SB_LINEDOWN, 0);
  }
}

/// A chart that the keys have reached is scrolled to.
void AssistantWindow::bring_into_view(const form::Control& chart) {
  form::Control* bar = assistant_.form().find("vsbSlide");
  if (bar == nullptr) return;
  const form::Bounds& bounds = chart.bounds();
  const int below = bounds.top + bounds.height + chart_title_height - bar->bounds().height;
  if (bounds.top < bar->value()) scroll(*bar, SB_THUMBPOSITION, bounds.top);
  if (below > bar->value()) scroll(*bar, SB_THUMBPOSITION, below);
}

void AssistantWindow::paint_window(HWND window) const {
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(window, &painting);
  RECT page, bar;
  GetClientRect(window, &page);
  bar = page;
  bar.top = page.bottom = pixels(page_bottom, dpi_);
  FillRect(target, &page, page_brush());
  FillRect(target, &bar, GetSysColorBrush(COLOR_BTNFACE));
  const Brush line(CreateSolidBrush(colour(Colour::Line)));
  bar.bottom = bar.top + 1;
  FillRect(target, &bar, line.get());
  EndPaint(window, &painting);
}

}  // namespace wizard::win32
