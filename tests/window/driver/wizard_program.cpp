#include "tests/window/driver/wizard_program.h"

#include <algorithm>
#include <stdexcept>

#include "support/encoding.h"
#include "support/win32/wide.h"
#include "wizard/form_layout.h"
#include "wizard/win32/control_window.h"

namespace window_driver {
namespace {

constexpr int most_charts = 100;
constexpr int most_pages = 20;

BOOL CALLBACK note_child(HWND window, LPARAM data) {
  reinterpret_cast<std::vector<HWND>*>(data)->push_back(window);
  return TRUE;
}

void notify(HWND control, WORD code) {
  const auto id = static_cast<WORD>(GetDlgCtrlID(control));
  SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(control));
}

UINT users_resolution(HWND window) {
  DWORD dpi = 0, size = sizeof dpi;
  const LSTATUS found =
      RegGetValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels", RRF_RT_REG_DWORD, nullptr, &dpi, &size);
  return found == ERROR_SUCCESS ? dpi : GetDpiForWindow(window);
}

}  // namespace

/// For an edit field of another program, GetWindowText gives an empty text.
std::string shown_text(HWND window) {
  const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const LRESULT copied = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(copied));
  return support::narrow(text);
}

WizardProgram::WizardProgram(std::string_view arguments)
    : process_("\"" PROGRAMS_DIR "/firststeps.exe\" " + std::string(arguments)) {
  // Places and sizes shall be those of the screen, whatever its resolution.
  SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  const auto shown = [this] {
    window_ = process_.find_window(L"FirstStepsAssistant");
    return window_ != nullptr || !process_.is_running();
  };
  if (!wait_until(shown) || window_ == nullptr) throw std::runtime_error("the wizard shows no window");
  resolution_ = users_resolution(window_);
  let_page_settle();
  wizard::build_form(form_);
  for (int chart = 1; chart < most_charts; ++chart) {
    form_.add({"optThumb", chart, form::Kind::ChartOption, "picSlide", {}, "", "", false});
  }
}

std::string WizardProgram::page() const {
  std::map<HWND, bool> known;
  for (const form::Control* page : form_.array("contstep")) {
    if (is_visible(find(*page), known)) return page->tag();
  }
  return {};
}

void WizardProgram::let_page_settle() const {
  // The window answers only when the whole page is there.
  SendMessageW(window_, WM_NULL, 0, 0);
  Sleep(GetDoubleClickTime() + 1);
}

void WizardProgram::wait_for_page(std::string_view tag) const {
  if (wait_until([&] { return support::equal_ignoring_case(page(), tag); })) return let_page_settle();
  throw std::runtime_error("the page " + std::string(tag) + " does not come up: " + page() + " is shown" +
                           (asks() ? ", with the message: " + message() : ""));
}

const form::Control& WizardProgram::described(std::string_view path) const {
  const form::Control* found = const_cast<form::Form&>(form_).find_path(path);
  if (found == nullptr) throw std::runtime_error("no such control: " + std::string(path));
  return *found;
}

void WizardProgram::look_around() const {
  std::vector<HWND> windows;
  EnumChildWindows(window_, note_child, reinterpret_cast<LPARAM>(&windows));
  std::map<int, HWND> children;
  for (const HWND window : windows) {
    auto place = places_.find(window);
    if (place == places_.end()) {
      place = places_.emplace(window, Place{GetDlgCtrlID(window), GetAncestor(window, GA_PARENT)}).first;
    }
    children.emplace(place->second.id, window);
  }
  for (std::size_t n = 0; n < form_.controls().size(); ++n) {
    const auto child = children.find(wizard::win32::control_id(*form_.controls()[n], n));
    if (child != children.end()) found_[form_.controls()[n].get()] = child->second;
  }
}

bool WizardProgram::is_visible(HWND window, std::map<HWND, bool>& known) const {
  if (const auto found = known.find(window); found != known.end()) return found->second;
  const auto place = places_.find(window);
  const bool visible = place == places_.end() ? IsWindowVisible(window) != 0
                                              : is_visible(place->second.parent, known) &&
                                                    (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  known.emplace(window, visible);
  return visible;
}

HWND WizardProgram::find(const form::Control& wanted) const {
  if (!found_.contains(&wanted)) look_around();
  const auto found = found_.find(&wanted);
  return found == found_.end() ? nullptr : found->second;
}

const form::Control* WizardProgram::shown_in(HWND window) const {
  const auto shown = std::find_if(found_.begin(), found_.end(), [&](const auto& row) { return row.second == window; });
  return shown == found_.end() ? nullptr : shown->first;
}

HWND WizardProgram::control(std::string_view path) const {
  if (const HWND found = find(described(path))) return found;
  throw std::runtime_error("not in the window: " + std::string(path));
}

std::string WizardProgram::text(std::string_view path) const { return shown_text(control(path)); }
bool WizardProgram::is_chosen(std::string_view path) const {
  return SendMessageW(control(path), BM_GETCHECK, 0, 0) == BST_CHECKED;
}
bool WizardProgram::is_shown(std::string_view path) const { return IsWindowVisible(find(described(path))) != 0; }
bool WizardProgram::is_enabled(std::string_view path) const { return IsWindowEnabled(control(path)) != 0; }

/// Closes the last page; there is nothing to cancel any more.
void WizardProgram::close_outcome() const {
  const auto is_done = [this] { return IsWindowEnabled(window_) != 0 && !is_shown("Command1(2)"); };
  if (!wait_until([&] { return !process_.is_running() || is_done(); })) return;
  // A click that arrives together with the page is taken for one that was meant for the page before.
  constexpr int tries = 20;
  for (int n = 0; n < tries && process_.is_running(); ++n) {
    let_page_settle();
    press("Command1(0)");
    WaitForSingleObject(process_.handle(), 250);
  }
}

std::string WizardProgram::focus() const {
  GUITHREADINFO state{};
  state.cbSize = sizeof state;
  if (GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &state) == 0) return {};
  if (shown_in(state.hwndFocus) == nullptr) look_around();
  // The edit field of a combo box is a window inside of it.
  for (HWND window = state.hwndFocus; window != nullptr && window != window_; window = GetParent(window)) {
    if (const form::Control* shown = shown_in(window)) return shown->path();
  }
  return {};
}

std::vector<const form::Control*> WizardProgram::seen() const {
  look_around();
  std::map<HWND, bool> known;
  std::vector<const form::Control*> seen;
  for (const auto& control : form_.controls()) {
    const auto shown = found_.find(control.get());
    if (shown != found_.end() && is_visible(shown->second, known)) seen.push_back(control.get());
  }
  return seen;
}

void WizardProgram::press(std::string_view path) const { PostMessageW(control(path), BM_CLICK, 0, 0); }

void WizardProgram::type(std::string_view path, std::string_view text) const {
  const HWND field = control(path);
  SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(support::wide(text).c_str()));
  if (described(path).kind() == form::Kind::ComboBox) notify(field, CBN_EDITCHANGE);
}

void WizardProgram::choose(std::string_view path, int entry) const {
  SendMessageW(control(path), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
  notify(control(path), CBN_SELCHANGE);
}

void WizardProgram::turn_page(std::string_view button) const {
  const std::string before = page();
  press(button);
  // Between two pages, no page is shown.
  const auto turned = [&] {
    const std::string now = page();
    return !now.empty() && now != before;
  };
  if (wait_until([&] { return turned() || asks() || !process_.is_running(); }) && turned()) return let_page_settle();
  throw std::runtime_error("the page " + before + " cannot be left" + (asks() ? ": " + message() : ""));
}

void WizardProgram::go_to(std::string_view tag) const {
  for (int n = 0; n < most_pages && !support::equal_ignoring_case(page(), tag); ++n) next();
}

std::string WizardProgram::message() const {
  constexpr int text_id = 0xFFFF;
  if (!wait_until([this] { return asks(); })) throw std::runtime_error("no message is shown");
  return shown_text(GetDlgItem(message_box(), text_id));
}

void WizardProgram::answer(int button) const {
  const HWND box = message_box();
  const HWND pressed = GetDlgItem(box, button);
  if (pressed == nullptr) throw std::runtime_error("the message has no such button");
  PostMessageW(pressed, BM_CLICK, 0, 0);
  if (!wait_until([&] { return IsWindow(box) == 0; })) throw std::runtime_error("the message does not go away");
}

}  // namespace window_driver
