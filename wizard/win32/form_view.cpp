#include "wizard/win32/form_view.h"

// These need windows.h before them.
#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "wizard/win32/accessible_control.h"
#include "wizard/win32/chart_option.h"
#include "wizard/win32/control_properties.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/drawn_controls.h"
#include "wizard/win32/hanging_lines.h"
#include "wizard/win32/page_images.h"
#include "wizard/win32/twips.h"

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

bool has_screen_reader() {
  BOOL runs = FALSE;
  return SystemParametersInfoW(SPI_GETSCREENREADER, 0, &runs, 0) != 0 && runs != FALSE;
}

bool is_page(const form::Control& control) { return control.parent() == nullptr && is_container(control); }

/// Own windows have no role that the system would know of, and it takes each kind of button for the same. The rest
/// keeps what the system says.
std::optional<long> role_of(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Image:
      return ROLE_SYSTEM_GRAPHIC;
    case form::Kind::StepIndicator:
    case form::Kind::Label:
      return ROLE_SYSTEM_STATICTEXT;
    case form::Kind::Frame:
      return is_page(control) ? ROLE_SYSTEM_PROPERTYPAGE : ROLE_SYSTEM_GROUPING;
    case form::Kind::PictureBox:
      return ROLE_SYSTEM_GROUPING;
    case form::Kind::Button:
      return ROLE_SYSTEM_PUSHBUTTON;
    case form::Kind::OptionButton:
      return ROLE_SYSTEM_RADIOBUTTON;
    case form::Kind::ChartOption:
      return ROLE_SYSTEM_CHECKBUTTON;
    case form::Kind::ComboBox:
      return ROLE_SYSTEM_COMBOBOX;
    case form::Kind::ProgressBar:
      return ROLE_SYSTEM_PROGRESSBAR;
    case form::Kind::ScrollBar:
      return ROLE_SYSTEM_SCROLLBAR;
    default:
      return std::nullopt;
  }
}

}  // namespace

void FormView::open(HWND window) {
  window_ = window;
  screen_reader_runs_ = has_screen_reader();
  for (const auto& control : form_.controls()) controls_.add(*control);
  layout_.open(window);
  for (const auto& shown : controls_) {
    if (shown->control->kind() == form::Kind::Timer) show_timer(*shown->control);
    // The list of the steps can come after the first page, but before anything else.
    const bool at_once = shown->control->visible() || !is_page(*shown->control);
    const bool is_list = shown->control->kind() == form::Kind::StepIndicator;
    if (shown->control->parent() == nullptr && at_once && !is_list) create(*shown);
    if (shown->window != nullptr) continue;
    is_list ? waiting_.push_front(shown.get()) : waiting_.push_back(shown.get());
  }
}

bool FormView::work_ahead() {
  layout_.arrange_changes();
  create_step_list();
  give_voices();
  if (pictures_.load_next(false, controls_) || tips_.create(window_)) return true;
  if (waiting_.empty()) return pictures_.load_next(true, controls_);
  ShownControl& shown = *waiting_.front();
  waiting_.pop_front();
  if (shown.window == nullptr) is_page(*shown.control) ? create_page(shown) : create(shown);
  return true;
}

/// No page but the first comes up without it.
void FormView::create_step_list() {
  if (waiting_.empty() || waiting_.front()->control->kind() != form::Kind::StepIndicator) return;
  ShownControl& list = *waiting_.front();
  waiting_.pop_front();
  create(list);
}

/// A window that is created at its place needs not be moved there.
RECT FormView::place_of(const form::Control& control) {
  if (control.kind() == form::Kind::ChartOption) return layout_.place_of_chart(control);
  return control.parent() == nullptr ? layout_.place_of_part(control)
                                     : layout_.place_on_page(outermost(control), control);
}

void FormView::create(ShownControl& shown) {
  const form::Control& control = *shown.control;
  controls_.create_window(shown, window_, place_of(control), layout_.dpi());
  if (shown.window == nullptr) return;
  control.kind() == form::Kind::ChartOption ? draw_as_chart(shown.window, layout_.chart_title_height())
                                            : dress_control(shown.window);
  if (control.kind() == form::Kind::TextBox && !control.editable()) hang_lines(shown.window);
  for (const form::Property property : told_to_new_window) {
    if (!shows_from_the_start(control, property)) show(shown, property);
  }
  tips_.add(shown);
  if (screen_reader_runs_)
    give_voice(shown);
  else
    silent_.push_back(&shown);
}

void FormView::give_voices() {
  std::erase_if(silent_, [this](const ShownControl* shown) {
    if (!outermost(*shown->control).visible()) return false;
    if (shown->window != nullptr) give_voice(*shown);
    return true;
  });
}

void FormView::give_voice(const ShownControl& shown) {
  if (!voice_) return;
  const SpokenOf what = [this, control = shown.control] { return voice_(*control); };
  make_accessible(shown.window, what, role_of(*shown.control));
  if (shown.control->kind() != form::Kind::ComboBox) return;
  // The field of a list is what has the focus.
  if (const HWND field = FindWindowExW(shown.window, nullptr, WC_EDITW, nullptr)) make_accessible(field, what);
}

/// Tab goes through the page before it comes to the buttons.
void FormView::create_page(ShownControl& page) {
  create(page);
  SetWindowPos(page.window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

/// What lies on a page is there when the page is shown, whether or not there was time to create it before. The lower
/// charts come in as soon as the page is there.
void FormView::create_contents(const form::Control& page) {
  screen_reader_runs_ = has_screen_reader();
  for (const auto& shown : controls_) {
    if (shown->window != nullptr || shown->control == &page || &outermost(*shown->control) != &page) continue;
    layout_.is_lower_chart(*shown->control) ? waiting_.push_back(shown.get()) : create(*shown);
  }
}

/// The pages that come after this one are wanted next.
void FormView::show_page(const form::Control& page) {
  create_step_list();
  layout_.begin_page(page);
  create_contents(page);
  layout_.finish_page(page);
  const int last = controls_.of(page)->id;
  std::ranges::stable_partition(waiting_, [last](const ShownControl* shown) { return shown->id > last; });
}

void FormView::show(ShownControl& shown, form::Property property) {
  const form::Control& control = *shown.control;
  const bool nested = std::exchange(showing_, true);
  switch (property) {
    case form::Property::Font:
      give_font(shown);
      break;
    case form::Property::Bounds:
      layout_.show_bounds(control);
      break;
    case form::Property::Maximum:
      show_property(shown.window, control, property);
      if (control.kind() == form::Kind::ScrollBar) layout_.arrange_scroll_bar();
      break;
    case form::Property::Picture:
      pictures_.add(shown);
      break;
    case form::Property::Visible:
      if (control.visible() && is_page(control)) show_page(control);
      control.kind() == form::Kind::Image ? show_image(shown) : show_property(shown.window, control, property);
      if (!is_page(control) && control.kind() != form::Kind::Image) layout_.note_change();
      break;
    case form::Property::Caption:
      show_property(shown.window, control, property);
      if (control.kind() == form::Kind::Label || control.kind() == form::Kind::Button) layout_.note_change();
      break;
    case form::Property::List:
      show_property(shown.window, control, property);
      if (control.kind() == form::Kind::StepIndicator) layout_.arrange_parts();
      break;
    default:
      show_property(shown.window, control, property);
      if (property == form::Property::Value && control.value() != 0) give_tab_stop(control);
      break;
  }
  showing_ = nested;
}

/// Tab goes to the chosen one of a group of options, not to the first one too.
void FormView::give_tab_stop(const form::Control& chosen) const {
  if (chosen.kind() != form::Kind::OptionButton) return;
  for (const form::Control* member : form_.array(chosen.name())) {
    const ShownControl* shown = controls_.of(*member);
    if (shown == nullptr || shown->window == nullptr) continue;
    const LONG_PTR style = GetWindowLongPtrW(shown->window, GWL_STYLE) & ~LONG_PTR{WS_TABSTOP};
    SetWindowLongPtrW(shown->window, GWL_STYLE, member == &chosen ? style | WS_TABSTOP : style);
  }
}

void FormView::show_timer(const form::Control& timer) const {
  KillTimer(window_, timer_id);
  if (timer.interval() > 0) SetTimer(window_, timer_id, static_cast<UINT>(timer.interval()), nullptr);
}

void FormView::give_font(const ShownControl& shown) {
  const HFONT font = layout_.font(*shown.control);
  SendMessageW(shown.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  if (shown.control->kind() == form::Kind::ComboBox && IsRectEmpty(&shown.placed) == 0)
    fit_combo_box(shown, layout_.dpi());
  if (shown.control->kind() != form::Kind::TextBox) return;
  const auto margin = static_cast<WORD>(pixels(text_margin, layout_.dpi()));
  SendMessageW(shown.window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, margin));
}

/// A line below a field is written as the field is.
void FormView::give_fonts() {
  for (const auto& shown : controls_)
    if (shown->window != nullptr) give_font(*shown);
  for (const PageNote& note : layout_.notes())
    SendMessageW(note.window, WM_SETFONT, SendMessageW(controls_.of(*note.field)->window, WM_GETFONT, 0, 0), FALSE);
}

void FormView::change_resolution(UINT dpi, const RECT& suggested) {
  layout_.set_dpi(dpi);
  give_fonts();
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  arrange_anew();
}

void FormView::change_text_size() {
  give_fonts();
  arrange_anew();
}

void FormView::arrange_anew() {
  layout_.arrange();
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormView::show_change(const form::Control& control, form::Property property) {
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

void FormView::add(const form::Control& control) {
  ShownControl& shown = controls_.add(control);
  outermost(control).visible() ? create(shown) : waiting_.push_back(&shown);
}

void FormView::redraw(const form::Control& control) const {
  if (const ShownControl* shown = controls_.of(control))
    RedrawWindow(shown->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void FormView::focus(const form::Control& control) const {
  const ShownControl* shown = controls_.of(control);
  if (shown != nullptr && shown->window != nullptr)
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(shown->window), TRUE);
}

std::optional<FormEvent> FormView::read(const ShownControl& shown, UINT notification) {
  being_read_ = shown.control;
  const std::optional<FormEvent> event = event_of_command(shown, notification);
  being_read_ = nullptr;
  return event;
}

}  // namespace wizard::win32
