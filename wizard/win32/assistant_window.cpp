#include "wizard/win32/assistant_window.h"

#include <commctrl.h>

#include <algorithm>

#include "wizard/form_layout.h"
#include "wizard/win32/chart_option.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/text.h"

namespace wizard::win32 {
namespace {

constexpr wchar_t window_class[] = L"FirstStepsAssistant";
constexpr DWORD window_style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr DWORD window_extended_style = WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME;
constexpr UINT_PTR timer_id = 1;
constexpr UINT load_thumbnail_message = WM_APP + 1;

/// Ids of the bottom buttons are those that the dialog keys Enter and Esc ask for.
constexpr int back_id = 3;
constexpr int first_id = 100;

constexpr form::Property all_properties[] = {
    form::Property::Caption, form::Property::List,  form::Property::Maximum, form::Property::ListIndex,
    form::Property::Text,    form::Property::Value, form::Property::Enabled,
};

form::Control* command_button(form::Form& form, int index) { return form.find("Command1", index); }

bool is_image(const form::Control& control) { return control.kind() == form::Kind::Image; }

bool takes_focus(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Button:
    case form::Kind::OptionButton:
    case form::Kind::ChartOption:
    case form::Kind::TextBox:
    case form::Kind::ComboBox:
      return true;
    default:
      return false;
  }
}

bool seen(const form::Control& control) {
  for (const form::Control* at = &control; at != nullptr; at = at->parent()) {
    if (!at->visible()) return false;
  }
  return true;
}

}  // namespace

AssistantWindow::AssistantWindow(HINSTANCE instance, frmAssistantFirstSteps& assistant)
    : assistant_(assistant), page_brush_(CreateSolidBrush(page_colour)) {
  create_window(instance);
  for (const auto& control : assistant_.form().controls()) add(*control);
  assistant_.form().set_observer(this);
  place_all();
  for (auto& shown : shown_) show_all(*shown);
  focus_first_of_page();
  SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
}

AssistantWindow::~AssistantWindow() {
  assistant_.form().set_observer(nullptr);
  if (window_ != nullptr) DestroyWindow(window_);
}

void AssistantWindow::run() {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageW(window_, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

// --- building and placing
// ---------------------------------------------------------------------------------------------

void AssistantWindow::create_window(HINSTANCE instance) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = window_procedure;
  description.hInstance = instance;
  description.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(1));
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = window_class;
  RegisterClassExW(&description);
  register_container_class(instance, container_procedure);
  CreateWindowExW(window_extended_style, window_class, wide(assistant_.form().caption()).c_str(), window_style,
                  CW_USEDEFAULT, CW_USEDEFAULT, 100, 100, nullptr, nullptr, instance, this);
  dpi_ = GetDpiForWindow(window_);
  tooltips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_, nullptr, instance, nullptr);
  RECT frame = pixels(form_bounds, dpi_);
  const int width = frame.right, height = frame.bottom;
  AdjustWindowRectExForDpi(&frame, window_style, FALSE, window_extended_style, dpi_);
  RECT desk;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &desk, 0);
  const int left = desk.left + (desk.right - desk.left - width) / 2;
  const int top = desk.top + (desk.bottom - desk.top - height) / 3;
  SetWindowPos(window_, nullptr, std::max(desk.left, static_cast<LONG>(left)),
               std::max(desk.top, static_cast<LONG>(top)), frame.right - frame.left, frame.bottom - frame.top,
               SWP_NOZORDER);
}

HWND AssistantWindow::parent_window(const form::Control& control) const {
  for (const form::Control* at = control.parent(); at != nullptr; at = at->parent()) {
    const auto found = by_control_.find(at);
    if (is_container(*at) && found != by_control_.end()) return found->second->window;
  }
  return window_;
}

int AssistantWindow::id_of(const form::Control& control) const {
  if (control.name() == "Command1") return control.index() == 0 ? IDOK : control.index() == 1 ? back_id : IDCANCEL;
  return first_id + static_cast<int>(shown_.size());
}

void AssistantWindow::add(const form::Control& control) {
  const bool first_of_group = control.index() <= 0;
  const HWND window = create_control_window(control, parent_window(control), id_of(control), first_of_group);
  shown_.push_back(std::make_unique<Shown>(Shown{&control, window, {}}));
  by_control_[&control] = shown_.back().get();
  if (window == nullptr) return;
  if (control.kind() == form::Kind::ChartOption) draw_as_chart(window, pixels(chart_title_height, dpi_));
  add_tooltip(*shown_.back());
}

void AssistantWindow::add_tooltip(const Shown& shown) {
  if (shown.control->tooltip().empty()) return;
  std::wstring text = wide(shown.control->tooltip());
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = window_;
  tool.uId = reinterpret_cast<UINT_PTR>(shown.window);
  tool.lpszText = text.data();
  SendMessageW(tooltips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void AssistantWindow::show_all(Shown& shown) {
  const form::Control& control = *shown.control;
  if (control.kind() == form::Kind::Timer) property_changed(control, form::Property::Interval);
  if (shown.window == nullptr) return;
  showing_ = true;
  for (const form::Property property : all_properties) show_property(shown.window, control, property);
  if (control.kind() == form::Kind::ProgressBar) show_property(shown.window, control, form::Property::Colours);
  showing_ = false;
  load_picture_of(shown);
  show_property(shown.window, control, form::Property::Visible);
}

/// Group boxes are no containers: what lies in them is placed in the window around.
RECT AssistantWindow::place_in_parent(const form::Control& control) const {
  form::Bounds bounds = control.bounds();
  if (control.kind() == form::Kind::ChartOption) bounds.height += chart_title_height;
  for (const form::Control* at = control.parent(); at != nullptr && !is_container(*at); at = at->parent()) {
    bounds.left += at->bounds().left;
    bounds.top += at->bounds().top;
  }
  return pixels(bounds, dpi_);
}

void AssistantWindow::place(Shown& shown) {
  if (shown.window == nullptr) return;
  RECT place = place_in_parent(*shown.control);
  // The height of a combo box includes its list.
  if (shown.control->kind() == form::Kind::ComboBox) place.bottom += pixels(3000, dpi_);
  SetWindowPos(shown.window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void AssistantWindow::place_all() {
  for (auto& shown : shown_) {
    if (shown->window == nullptr) continue;
    const form::Control& control = *shown->control;
    const HFONT font = fonts_.font(control.font(), text_style(control), dpi_);
    SendMessageW(shown->window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    if (control.kind() == form::Kind::ChartOption) draw_as_chart(shown->window, pixels(chart_title_height, dpi_));
    place(*shown);
  }
}

void AssistantWindow::change_resolution(UINT dpi, const RECT& suggested) {
  dpi_ = dpi;
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
               suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  // The controls hold the old fonts until each has its new one.
  Fonts old = std::move(fonts_);
  fonts_ = Fonts();
  place_all();
  InvalidateRect(window_, nullptr, TRUE);
}

/// Thumbnails come in one by one after the page is shown, so that it answers at once however many there are.
void AssistantWindow::load_picture_of(Shown& shown) {
  if (is_image(*shown.control)) {
    shown.picture = load_picture(shown.control->picture());
    redraw_images_around(*shown.control);
  } else if (shown.control->kind() == form::Kind::ChartOption && !shown.control->picture().empty()) {
    if (thumbnails_to_load_.empty()) PostMessageW(window_, load_thumbnail_message, 0, 0);
    thumbnails_to_load_.push_back(&shown);
  }
}

void AssistantWindow::load_next_thumbnail() {
  if (thumbnails_to_load_.empty()) return;
  Shown& shown = *thumbnails_to_load_.front();
  thumbnails_to_load_.erase(thumbnails_to_load_.begin());
  set_thumbnail(shown.window, load_picture(shown.control->picture()));
  if (!thumbnails_to_load_.empty()) PostMessageW(window_, load_thumbnail_message, 0, 0);
}

// --- the form's changes
// -----------------------------------------------------------------------------------------------

AssistantWindow::Shown* AssistantWindow::shown_of(const form::Control& control) {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : found->second;
}

void AssistantWindow::property_changed(const form::Control& control, form::Property property) {
  if (property == form::Property::Interval) {
    KillTimer(window_, timer_id);
    if (control.interval() > 0) SetTimer(window_, timer_id, static_cast<UINT>(control.interval()), nullptr);
    return;
  }
  Shown* shown = shown_of(control);
  if (shown == nullptr || shown->window == nullptr) return;
  if (property == form::Property::Picture) {
    load_picture_of(*shown);
  } else if (property == form::Property::Bounds) {
    place(*shown);
    if (control.kind() == form::Kind::ScrollBar) show_property(shown->window, control, form::Property::Maximum);
  } else {
    const bool nested = std::exchange(showing_, true);
    show_property(shown->window, control, property);
    showing_ = nested;
  }
  if (is_image(control)) redraw_images_around(control);
}

void AssistantWindow::control_added(const form::Control& control) {
  add(control);
  Shown& shown = *shown_.back();
  if (shown.window == nullptr) return;
  const HFONT font = fonts_.font(control.font(), text_style(control), dpi_);
  SendMessageW(shown.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  place(shown);
  show_all(shown);
}

void AssistantWindow::focus_requested(const form::Control& control) {
  focus_asked_for_ = true;
  if (const Shown* shown = shown_of(control)) focus_window(shown->window);
}

void AssistantWindow::redraw_requested(const form::Control& control) {
  if (const Shown* shown = shown_of(control))
    RedrawWindow(shown->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

// --- events
// -----------------------------------------------------------------------------------------------------------

AssistantWindow::Shown* AssistantWindow::shown_by_id(int id) {
  const auto same_id = [&](const auto& shown) { return shown->window != nullptr && GetDlgCtrlID(shown->window) == id; };
  const std::size_t position = static_cast<std::size_t>(id - first_id);
  if (id >= first_id) return position < shown_.size() ? shown_[position].get() : nullptr;
  const auto found = std::find_if(shown_.begin(), shown_.end(), same_id);
  return found == shown_.end() ? nullptr : found->get();
}

void AssistantWindow::command(int id, UINT code) {
  Shown* shown = shown_by_id(id);
  if (showing_ || shown == nullptr || shown->window == nullptr) return;
  form::Control* control = assistant_.form().find(shown->control->name(), shown->control->index());
  switch (control->kind()) {
    case form::Kind::Button:
    case form::Kind::OptionButton:
    case form::Kind::ChartOption:
      if (code == BN_CLICKED && control->enabled()) click(*control);
      break;
    case form::Kind::TextBox:
      if (code == EN_CHANGE) type(*control, shown->window);
      break;
    case form::Kind::ComboBox:
      if (code == CBN_EDITCHANGE) type(*control, shown->window);
      if (code == CBN_SELCHANGE) choose(*control, shown->window);
      break;
    default:
      break;
  }
}

void AssistantWindow::click(form::Control& control) {
  if (control.kind() == form::Kind::OptionButton) control.set_value(1);
  if (control.kind() == form::Kind::ChartOption) control.set_value(control.value() == 0 ? 1 : 0);
  raise_click(control);
}

void AssistantWindow::raise_click(const form::Control& control) {
  const int step_before = assistant_.CurrentStep();
  focus_asked_for_ = false;
  assistant_.click(control.name(), control.index());
  after_event(step_before);
}

void AssistantWindow::type(form::Control& control, HWND window) {
  if (!control.editable()) return;
  control.set_text(window_text(window));
  assistant_.change(control.name(), control.index());
}

void AssistantWindow::choose(form::Control& control, HWND window) {
  control.set_list_index(selected_entry(window));
  raise_click(control);
}

void AssistantWindow::scroll(HWND bar, int request, int position) {
  const auto found =
      std::find_if(shown_.begin(), shown_.end(), [&](const auto& shown) { return shown->window == bar; });
  if (found == shown_.end()) return;
  form::Control* control = assistant_.form().find((*found)->control->name(), (*found)->control->index());
  const int page = control->bounds().height, line = page / 8;
  int value = control->value();
  switch (request) {
    case SB_LINEUP:
      value -= line;
      break;
    case SB_LINEDOWN:
      value += line;
      break;
    case SB_PAGEUP:
      value -= page;
      break;
    case SB_PAGEDOWN:
      value += page;
      break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
      value = position;
      break;
    default:
      return;
  }
  control->set_value(std::clamp(value, 0, std::max(0, control->maximum())));
  assistant_.change(control->name(), control->index());
}

/// The wheel turns the scroll bar of the page that is shown, wherever the pointer is.
void AssistantWindow::wheel(int delta) {
  for (const auto& shown : shown_) {
    const form::Control& control = *shown->control;
    if (control.kind() != form::Kind::ScrollBar || !seen(control)) continue;
    for (int turns = std::max(1, std::abs(delta) / WHEEL_DELTA) * 3; turns > 0; --turns) {
      scroll(shown->window, delta > 0 ? SB_LINEUP : SB_LINEDOWN, 0);
    }
  }
}

void AssistantWindow::after_event(int step_before) {
  if (assistant_.state() != frmAssistantFirstSteps::State::Running) {
    DestroyWindow(window_);
    return;
  }
  if (assistant_.CurrentStep() != step_before && !focus_asked_for_) focus_first_of_page();
}

/// The chosen one of a group of options stands for the group: focusing another would choose it.
void AssistantWindow::focus_first_of_page() {
  for (const auto& shown : shown_) {
    const form::Control& control = *shown->control;
    const form::Control* page = control.parent();
    if (page == nullptr || !takes_focus(control) || !control.enabled() || !seen(control)) continue;
    const bool unchosen_option = control.kind() == form::Kind::OptionButton && control.value() == 0;
    if (unchosen_option) continue;
    focus_window(shown->window);
    return;
  }
  if (const Shown* next = shown_of(*command_button(assistant_.form(), 0))) focus_window(next->window);
}

void AssistantWindow::focus_window(HWND window) {
  SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
  SetFocus(window);
  wchar_t name[16];
  GetClassNameW(window, name, 16);
  if (lstrcmpiW(name, L"Edit") == 0) SendMessageW(window, EM_SETSEL, 0, -1);
}

// --- drawing
// ----------------------------------------------------------------------------------------------------------

void AssistantWindow::paint_window() {
  PAINTSTRUCT painting;
  const HDC target = BeginPaint(window_, &painting);
  RECT whole;
  GetClientRect(window_, &whole);
  RECT content = whole;
  content.bottom = pixels(page_bottom, dpi_);
  FillRect(target, &content, page_brush_.get());
  RECT bar{0, content.bottom, whole.right, whole.bottom};
  FillRect(target, &bar, GetSysColorBrush(COLOR_BTNFACE));
  const Brush line(CreateSolidBrush(line_colour));
  bar.bottom = bar.top + 1;
  FillRect(target, &bar, line.get());
  EndPaint(window_, &painting);
}

void AssistantWindow::redraw_images_around(const form::Control& control) {
  for (const auto& shown : shown_) {
    if (shown->window != nullptr && is_image(*shown->control) && shown->control->parent() == control.parent()) {
      InvalidateRect(shown->window, nullptr, FALSE);
    }
  }
}

/// Images overlap: each draws all that lie below it and above it, so that their order is the form's whatever the
/// windows' order.
void AssistantWindow::draw_images_below(HDC target, const Shown& image, const RECT& place) {
  for (const auto& shown : shown_) {
    const form::Control& other = *shown->control;
    if (!is_image(other) || other.parent() != image.control->parent() || !other.visible() || !shown->picture) continue;
    RECT there = place_in_parent(other), common;
    if (!IntersectRect(&common, &there, &place)) continue;
    OffsetRect(&there, -place.left, -place.top);
    draw_picture(target, there, shown->picture);
  }
}

void AssistantWindow::draw_image(const DRAWITEMSTRUCT& item) {
  const Shown* shown = shown_by_id(static_cast<int>(item.CtlID));
  if (shown == nullptr) return;
  const RECT place = place_in_parent(*shown->control);
  const int width = place.right - place.left, height = place.bottom - place.top;
  const MemoryContext memory(CreateCompatibleDC(item.hDC));
  const Bitmap canvas(CreateCompatibleBitmap(item.hDC, width, height));
  const Selection selection(memory.get(), canvas.get());
  const RECT whole{0, 0, width, height};
  FillRect(memory.get(), &whole, page_brush_.get());
  draw_images_below(memory.get(), *shown, place);
  BitBlt(item.hDC, 0, 0, width, height, memory.get(), 0, 0, SRCCOPY);
}

LRESULT AssistantWindow::colour_text(HDC target, HWND child, UINT message) {
  const Shown* shown = shown_by_id(GetDlgCtrlID(child));
  const bool on_page = GetParent(child) != window_;
  if (!on_page)
    return DefWindowProcW(window_, message, reinterpret_cast<WPARAM>(target), reinterpret_cast<LPARAM>(child));
  SetBkColor(target, page_colour);
  SetTextColor(target, text_colour);
  if (shown != nullptr && text_style(*shown->control) == TextStyle::Heading) SetTextColor(target, heading_colour);
  if (!IsWindowEnabled(child)) SetTextColor(target, quiet_colour);
  return reinterpret_cast<LRESULT>(page_brush_.get());
}

// --- messages
// ---------------------------------------------------------------------------------------------------------

LRESULT CALLBACK AssistantWindow::window_procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<AssistantWindow*>(reinterpret_cast<CREATESTRUCTW*>(second)->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    EnableNonClientDpiScaling(window);
  }
  auto* self = reinterpret_cast<AssistantWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return self != nullptr ? self->handle_message(message, first, second)
                         : DefWindowProcW(window, message, first, second);
}

/// A container passes on what its controls report and paints nothing but its background.
LRESULT CALLBACK AssistantWindow::container_procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORBTN:
      return SendMessageW(GetParent(window), message, first, second);
    case WM_ERASEBKGND: {
      RECT whole;
      GetClientRect(window, &whole);
      const Brush background(CreateSolidBrush(page_colour));
      FillRect(reinterpret_cast<HDC>(first), &whole, background.get());
      return 1;
    }
    default:
      return DefWindowProcW(window, message, first, second);
  }
}

LRESULT AssistantWindow::handle_message(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      command(LOWORD(first), HIWORD(first));
      return 0;
    case WM_TIMER:
      assistant_.tick();
      return 0;
    case WM_VSCROLL: {
      SCROLLINFO info{sizeof info, SIF_TRACKPOS, 0, 0, 0, 0, 0};
      GetScrollInfo(reinterpret_cast<HWND>(second), SB_CTL, &info);
      scroll(reinterpret_cast<HWND>(second), LOWORD(first), info.nTrackPos);
      return 0;
    }
    case WM_MOUSEWHEEL:
      wheel(GET_WHEEL_DELTA_WPARAM(first));
      return 0;
    case load_thumbnail_message:
      load_next_thumbnail();
      return 0;
    case WM_DRAWITEM:
      draw_image(*reinterpret_cast<DRAWITEMSTRUCT*>(second));
      return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORBTN:
      return colour_text(reinterpret_cast<HDC>(first), reinterpret_cast<HWND>(second), message);
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint_window();
      return 0;
    case WM_DPICHANGED:
      change_resolution(HIWORD(first), *reinterpret_cast<RECT*>(second));
      return 0;
    case DM_GETDEFID:
      return MAKELRESULT(IDOK, DC_HASDEFID);
    case WM_CLOSE:
      command(IDCANCEL, BN_CLICKED);
      return 0;
    case WM_DESTROY:
      window_ = nullptr;
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window_, message, first, second);
  }
}

}  // namespace wizard::win32
