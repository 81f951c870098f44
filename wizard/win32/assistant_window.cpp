#include "wizard/win32/assistant_window.h"

#include <cstdlib>
#include <utility>

#include "support/win32/wide.h"
#include "wizard/form_layout.h"
#include "wizard/win32/container_window.h"
#include "wizard/win32/drawn_controls.h"
#include "wizard/win32/focus.h"
#include "wizard/win32/frame_window.h"
#include "wizard/win32/page_images.h"
#include "wizard/win32/repeated_key.h"
#include "wizard/win32/step_list_window.h"

namespace wizard::win32 {

namespace {

constexpr int cancel_button = 2;

Colour text_colour(const ShownControl* shown) {
  switch (shown != nullptr ? text_style(*shown->control) : TextStyle::Normal) {
    case TextStyle::Heading:
    case TextStyle::Emphasis:
      return Colour::Heading;
    case TextStyle::Hint:
      return Colour::Hint;
    default:
      return Colour::Text;
  }
}

int thumb_position(HWND bar) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  GetScrollInfo(bar, SB_CTL, &info);
  return info.nTrackPos;
}

}  // namespace

AssistantWindow::AssistantWindow(HINSTANCE instance, frmAssistantFirstSteps& assistant)
    : assistant_(assistant), view_(assistant.form()), notes_(assistant.form(), assistant.config()) {
  register_container_class(instance);
  register_step_list_class(instance);
  window_ = create_frame_window(instance, support::wide(assistant_.form().caption()).c_str(), dialog_procedure, this);
  centre_frame_window(window_, first_size);
  view_.set_voice([this](const form::Control& control) { return voice(control); });
  view_.open(window_);
  is_open_ = true;
  assistant_.form().set_observer(this);
  SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  focus_first_of_page();
  RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  page_shown_ = GetTickCount64();
}

AssistantWindow::~AssistantWindow() {
  assistant_.form().set_observer(nullptr);
  if (window_ != nullptr) DestroyWindow(window_);
}

void AssistantWindow::run() {
  MSG message;
  while (next_message(message)) {
    key_is_repeated_ = is_repeated_key(message);
    if (!turn_charts(message) && IsDialogMessageW(window_, &message) == 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    follow_focus(message);
    show_findings();
  }
}

void AssistantWindow::show_outcome() {
  if (window_ == nullptr) return;
  view_.layout().arrange();
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  page_shown_ = GetTickCount64();
  run();
}

/// Not while a button of the mouse is down: what it is about to click must not move away below it.
void AssistantWindow::show_findings() {
  if (!notes_due_ || window_ == nullptr || GetKeyState(VK_LBUTTON) < 0) return;
  notes_due_ = false;
  if (notes_.show(assistant_.page_findings(), view_.controls())) view_.layout().set_notes(notes_.lines());
}

/// A finding is said again with its field.
Spoken AssistantWindow::voice(const form::Control& control) const {
  Spoken said = spoken(assistant_.form(), assistant_.config(), control);
  if (const std::string finding = notes_.text_of(control); !finding.empty())
    said.description += (said.description.empty() ? "" : ". ") + finding;
  return said;
}

/// What has the focus comes into sight, wherever the focus has come from; and comes again when the user types into it
/// or presses its access key.
void AssistantWindow::follow_focus(const MSG& message) {
  const HWND focus = GetFocus();
  const bool is_new = focus != std::exchange(focus_, focus);
  if (is_new) notes_due_ = true;
  const bool is_typed = message.message == WM_CHAR || message.message == WM_SYSCHAR;
  if ((is_new || is_typed) && focus != nullptr && window_ != nullptr) view_.layout().reveal(focus);
}

/// What can wait comes in while there is nothing else to do.
bool AssistantWindow::next_message(MSG& message) {
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == 0) {
    if (!work_ahead()) return GetMessageW(&message, nullptr, 0, 0) > 0;
  }
  return message.message != WM_QUIT;
}

/// One piece; false where nothing waits.
bool AssistantWindow::work_ahead() {
  if (!has_icons_ && window_ != nullptr) set_frame_icons(window_, view_.layout().dpi());
  return !std::exchange(has_icons_, true) || view_.work_ahead();
}

void AssistantWindow::property_changed(const form::Control& control, form::Property property) {
  view_.show_change(control, property);
}

void AssistantWindow::control_added(const form::Control& control) { view_.add(control); }

void AssistantWindow::focus_requested(const form::Control& control) {
  focus_asked_for_ = true;
  view_.focus(control);
}

void AssistantWindow::redraw_requested(const form::Control& control) { view_.redraw(control); }

void AssistantWindow::focus_first_of_page() {
  if (const form::Control* first = first_field(assistant_.form())) view_.focus(*first);
}

void AssistantWindow::command(HWND child, UINT notification) {
  const ShownControl* shown = view_.controls().of(child);
  if (view_.is_showing() || shown == nullptr) return;
  if (shown->control->kind() == form::Kind::ChartOption && notification == BN_SETFOCUS) {
    assistant_.focus(shown->control->name(), shown->control->index());
    view_.layout().arrange_changes();
    return bring_into_view(*shown->control);
  }
  if (const auto event = view_.read(*shown, notification)) raise(*event);
}

/// The second click of a double click and a key that is held down press what the page before had there.
bool AssistantWindow::is_meant_for_page_before(const form::Control& control) const {
  const bool asks_first = control.name() == "Command1" && control.index() == cancel_button;
  if (control.kind() != form::Kind::Button || asks_first) return false;
  return key_is_repeated_ || GetTickCount64() - page_shown_ < GetDoubleClickTime();
}

void AssistantWindow::raise(const FormEvent& event) {
  const form::Control& control = *event.control;
  notes_due_ = true;
  if (event.kind == FormEvent::Kind::Change) {
    assistant_.change(control.name(), control.index());
    return view_.layout().arrange_changes();
  }
  if (is_meant_for_page_before(control)) return;
  // Long work lets input through; a second click must not begin the same work inside the first.
  if (std::exchange(in_event_, true)) return;
  const int step_before = assistant_.CurrentStep();
  focus_asked_for_ = false;
  assistant_.click(control.name(), control.index());
  in_event_ = false;
  view_.layout().arrange_changes();
  if (assistant_.state() != frmAssistantFirstSteps::State::Running) {
    PostQuitMessage(0);
  } else if (assistant_.CurrentStep() != step_before) {
    if (!focus_asked_for_) focus_first_of_page();
    // The page comes up in one go.
    RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    page_shown_ = GetTickCount64();
  }
}

/// The cross of the frame is the button Cancel.
void AssistantWindow::close() {
  if (form::Control* cancel = assistant_.form().find("Command1", cancel_button))
    raise({FormEvent::Kind::Click, cancel});
}

void AssistantWindow::scroll(form::Control& bar, int request, int thumb) {
  raise(event_of_scroll(bar, view_.layout().scroll_range(), request, thumb));
}

/// The wheel turns the scroll bar of the page that is shown, wherever the pointer is. Fine wheels report parts of a
/// notch.
void AssistantWindow::turn_wheel(int delta) {
  constexpr int lines = 3;
  wheel_rest_ += delta * lines;
  const int turned = wheel_rest_ / WHEEL_DELTA;
  wheel_rest_ -= turned * WHEEL_DELTA;
  for (int line = 0; line < std::abs(turned); ++line) scroll_line(turned > 0 ? SB_LINEUP : SB_LINEDOWN);
}

/// The charts, as far as they go, then the page.
void AssistantWindow::scroll_line(int request) {
  form::Control* bar = assistant_.form().find("vsbSlide");
  if (bar != nullptr && is_seen(*bar)) {
    const int before = bar->value();
    scroll(*bar, request, 0);
    if (bar->value() != before) return;
  }
  view_.layout().scroll_page(request);
}

/// Arrow keys move among the charts as they lie: to the next one, or the one above or below. At an edge they stay.
bool AssistantWindow::turn_charts(const MSG& message) {
  const ShownControl* shown = message.message == WM_KEYDOWN ? view_.controls().of(GetFocus()) : nullptr;
  if (shown == nullptr || shown->control->kind() != form::Kind::ChartOption) return false;
  const auto step = [&] {
    switch (message.wParam) {
      case VK_LEFT:
        return -1;
      case VK_RIGHT:
        return 1;
      case VK_UP:
        return -charts_in_row;
      case VK_DOWN:
        return charts_in_row;
      default:
        return 0;
    }
  }();
  if (step == 0) return false;
  const form::Control* next = assistant_.form().find("optThumb", shown->control->index() + step);
  if (next != nullptr && next->visible()) view_.focus(*next);
  return true;
}

/// A chart that the keys have reached is scrolled to.
void AssistantWindow::bring_into_view(const form::Control& chart) {
  form::Control* bar = assistant_.form().find("vsbSlide");
  if (bar == nullptr) return;
  const form::Bounds& bounds = chart.bounds();
  const int below =
      bounds.top + bounds.height + chart_title_height + chart_row_gap - view_.layout().scroll_range().page;
  if (bounds.top < bar->value()) scroll(*bar, SB_THUMBPOSITION, bounds.top);
  if (below > bar->value()) scroll(*bar, SB_THUMBPOSITION, below);
}

void AssistantWindow::paint_window(HWND window) const {
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(window, &painting);
  RECT page, bar;
  GetClientRect(window, &page);
  bar = page;
  bar.top = page.bottom = view_.layout().bar_top();
  FillRect(target, &page, page_brush());
  FillRect(target, &bar, brush(Colour::Bar));
  bar.bottom = bar.top + 1;
  FillRect(target, &bar, brush(Colour::Line));
  EndPaint(window, &painting);
}

INT_PTR CALLBACK AssistantWindow::dialog_procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, second);
    return FALSE;
  }
  auto* self = reinterpret_cast<AssistantWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  if (self == nullptr) return FALSE;
  if (asks_for_colours(message)) {
    const HWND child = reinterpret_cast<HWND>(second);
    const bool on_bar = GetParent(child) == window;
    return reinterpret_cast<INT_PTR>(colour_control(
        reinterpret_cast<HDC>(first), message, child,
        on_bar ? Colour::BarText : text_colour(self->view_.controls().of(child)), on_bar ? Colour::Bar : Colour::Page));
  }
  return self->handle_user_message(window, message, first, second) ||
                 self->handle_window_message(window, message, second) ||
                 self->handle_system_message(window, message, first, second)
             ? TRUE
             : FALSE;
}

/// What the user does.
bool AssistantWindow::handle_user_message(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      command(second != 0 ? reinterpret_cast<HWND>(second) : GetDlgItem(window, LOWORD(first)), HIWORD(first));
      return true;
    case WM_VSCROLL: {
      const HWND bar = reinterpret_cast<HWND>(second);
      const ShownControl* shown = view_.controls().of(bar);
      if (shown != nullptr && shown->control->kind() == form::Kind::ScrollBar)
        scroll(*shown->control, LOWORD(first), thumb_position(bar));
      else
        view_.layout().scroll_page(LOWORD(first));
      return true;
    }
    case WM_MOUSEWHEEL:
      turn_wheel(GET_WHEEL_DELTA_WPARAM(first));
      return true;
    case WM_CLOSE:
      close();
      return true;
    default:
      return false;
  }
}

/// What the window shows.
bool AssistantWindow::handle_window_message(HWND window, UINT message, LPARAM second) {
  switch (message) {
    case WM_NOTIFY:
      return view_.answer_tip(*reinterpret_cast<NMHDR*>(second));
    case WM_HELP:
      assistant_.help();
      return true;
    case WM_TIMER:
      assistant_.tick();
      // An image draws what lies in its place in the form: its window moves before it is painted.
      view_.layout().arrange_changes();
      return true;
    case WM_DRAWITEM:
      draw_image(*reinterpret_cast<const DRAWITEMSTRUCT*>(second), view_.controls());
      return true;
    case WM_ERASEBKGND:
      SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);
      return true;
    case WM_PAINT:
      paint_window(window);
      return true;
    default:
      return false;
  }
}

/// What the system wants.
bool AssistantWindow::handle_system_message(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_GETDPISCALEDSIZE:
      *reinterpret_cast<SIZE*>(second) = size_in_resolution(window, view_.layout().dpi(), static_cast<UINT>(first));
      SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);
      return true;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = least_track_size(window, least_size);
      return true;
    case WM_SIZE:
      if (first != SIZE_MINIMIZED && is_open_) {
        view_.layout().arrange();
        InvalidateRect(window, nullptr, FALSE);
      }
      return true;
    case WM_DPICHANGED:
      set_frame_icons(window, HIWORD(first));
      view_.change_resolution(HIWORD(first), *reinterpret_cast<const RECT*>(second));
      return true;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
      if (refresh_scheme()) dress_again(window);
      if (refresh_text_scale()) view_.change_text_size();
      return false;
    case WM_ACTIVATE:
      // The viewer of a chart was let before it.
      if (LOWORD(first) != WA_INACTIVE && work_ != nullptr)
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      return false;
    case WM_QUERYENDSESSION:
      SetWindowLongPtrW(window, DWLP_MSGRESULT, may_session_end() ? TRUE : FALSE);
      return true;
    case WM_ENDSESSION:
      // As Cancel, but there is nobody to ask. After this message the process may end at any moment.
      if (first != 0) PostQuitMessage(0);
      return true;
    case WM_DESTROY:
      window_ = nullptr;
      PostQuitMessage(0);
      return true;
    default:
      return false;
  }
}

/// On a page, nothing has been written. Work that goes on is brought to its end first.
bool AssistantWindow::may_session_end() const {
  if (work_ == nullptr || !work_->is_working()) return true;
  work_->end_soon();
  return false;
}

}  // namespace wizard::win32
