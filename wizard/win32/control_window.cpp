#include "wizard/win32/control_window.h"

#include <commctrl.h>
#include <uxtheme.h>

#include "support/encoding.h"
#include "support/win32/wide.h"
#include "wizard/win32/container_window.h"

namespace wizard::win32 {
namespace {

constexpr int back_id = 3, first_id = 100;

struct NativeClass {
  const wchar_t* name;
  DWORD style;
  DWORD extended_style = 0;
};

/// A text from the user's data is shown as it is; "&" marks an access key in designed texts only.
DWORD label_style(const form::Control& control) {
  return SS_LEFT | SS_EDITCONTROL | (control.tag().starts_with('L') ? 0U : SS_NOPREFIX);
}

NativeClass text_class(const form::Control& control) {
  if (control.editable()) return {L"EDIT", WS_TABSTOP | WS_GROUP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
  return {L"EDIT", WS_TABSTOP | WS_GROUP | WS_VSCROLL | WS_BORDER | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL};
}

DWORD list_style(const form::Control& control) {
  return WS_TABSTOP | WS_GROUP | WS_VSCROLL | CBS_AUTOHSCROLL |
         (control.editable() ? DWORD{CBS_DROPDOWN} : DWORD{CBS_DROPDOWNLIST});
}

/// Tab goes to a group of options, the arrow keys from one to the next.
DWORD option_style(const form::Control& control) { return control.index() <= 0 ? WS_GROUP | WS_TABSTOP : 0; }

NativeClass native_class(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Label:
      return {L"STATIC", label_style(control)};
    case form::Kind::Button:
      return {L"BUTTON", WS_TABSTOP | WS_GROUP | BS_PUSHBUTTON | BS_MULTILINE};
    case form::Kind::OptionButton:
      return {L"BUTTON", option_style(control) | BS_AUTORADIOBUTTON | BS_MULTILINE | BS_VCENTER};
    case form::Kind::ChartOption:
      return {L"BUTTON", option_style(control) | BS_CHECKBOX | BS_NOTIFY};
    case form::Kind::TextBox:
      return text_class(control);
    case form::Kind::ComboBox:
      return {L"COMBOBOX", list_style(control)};
    case form::Kind::Image:
      return {L"STATIC", SS_OWNERDRAW};
    case form::Kind::ScrollBar:
      return {L"SCROLLBAR", SBS_VERT | WS_GROUP};
    case form::Kind::ProgressBar:
      return {PROGRESS_CLASSW, PBS_SMOOTH};
    case form::Kind::Frame:
    case form::Kind::PictureBox:
      if (!is_container(control)) return {L"BUTTON", WS_GROUP | BS_GROUPBOX};
      // Without WS_CLIPCHILDREN: a group box counts on the ground below it.
      return {container_class, 0, WS_EX_CONTROLPARENT};
    case form::Kind::Timer:
      break;
  }
  return {nullptr, 0};
}

bool shows_text(form::Kind kind) { return kind == form::Kind::TextBox || kind == form::Kind::ComboBox; }

void show_text(HWND window, const std::string& text) {
  if (window_text(window) != text) SetWindowTextW(window, support::wide(text).c_str());
}

void show_list(HWND window, const form::Control& control) {
  SendMessageW(window, CB_RESETCONTENT, 0, 0);
  for (const form::ListItem& item : control.items()) {
    SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(support::wide(item.text).c_str()));
  }
}

void show_selection(HWND window, const form::Control& control) {
  if (SendMessageW(window, CB_GETCURSEL, 0, 0) == control.list_index()) return;
  SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(control.list_index()), 0);
  if (control.editable()) show_text(window, control.text());
}

/// Told that it is not chosen, an option that was not chosen would lose its tab stop.
void show_chosen(HWND window, int value) {
  const WPARAM wanted = value != 0 ? BST_CHECKED : BST_UNCHECKED;
  if (SendMessageW(window, BM_GETCHECK, 0, 0) != static_cast<LRESULT>(wanted))
    SendMessageW(window, BM_SETCHECK, wanted, 0);
}

void show_value(HWND window, const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::OptionButton:
    case form::Kind::ChartOption:
      show_chosen(window, control.value());
      break;
    case form::Kind::ScrollBar:
      SetScrollPos(window, SB_CTL, control.value(), TRUE);
      break;
    case form::Kind::ProgressBar:
      SendMessageW(window, PBM_SETPOS, static_cast<WPARAM>(control.value()), 0);
      break;
    default:
      break;
  }
}

/// Positions of the form's scroll bar are twips; a page is what the bar itself covers.
void show_scroll_range(HWND window, const form::Control& control) {
  const int page = control.bounds().height;
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE;
  info.nMax = control.maximum() + page - 1;
  info.nPage = static_cast<UINT>(page);
  SetScrollInfo(window, SB_CTL, &info, TRUE);
}

void show_maximum(HWND window, const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::ScrollBar:
      show_scroll_range(window, control);
      break;
    case form::Kind::ProgressBar:
      SendMessageW(window, PBM_SETRANGE32, 0, control.maximum());
      break;
    case form::Kind::TextBox:
      if (control.editable()) SendMessageW(window, EM_SETLIMITTEXT, static_cast<WPARAM>(control.maximum()), 0);
      break;
    case form::Kind::ComboBox:
      if (control.editable()) SendMessageW(window, CB_LIMITTEXT, static_cast<WPARAM>(control.maximum()), 0);
      break;
    default:
      break;
  }
}

/// The themed bar has colours of its own; the plain one shows those asked for.
void show_colours(HWND window, const form::Control& control) {
  SetWindowTheme(window, L"", L"");
  SendMessageW(window, PBM_SETBARCOLOR, 0, static_cast<LPARAM>(control.colours().bar));
  SendMessageW(window, PBM_SETBKCOLOR, 0, static_cast<LPARAM>(control.colours().background));
}

}  // namespace

bool is_container(const form::Control& control) {
  if (control.kind() == form::Kind::PictureBox) return true;
  return control.kind() == form::Kind::Frame && control.parent() == nullptr;
}

int control_id(const form::Control& control, std::size_t position) {
  static constexpr int buttons[] = {IDOK, back_id, IDCANCEL};
  if (support::equal_ignoring_case(control.name(), "Command1") && control.index() >= 0 && control.index() < 3)
    return buttons[control.index()];
  return first_id + static_cast<int>(position);
}

HWND create_control_window(const form::Control& control, HWND parent, int id, const RECT& place) {
  const NativeClass native = native_class(control);
  if (native.name == nullptr) return nullptr;
  const std::string& text = shows_text(control.kind()) ? control.text() : control.caption();
  return CreateWindowExW(native.extended_style, native.name, support::wide(text).c_str(), native.style | WS_CHILD,
                         place.left, place.top, place.right - place.left, place.bottom - place.top, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

void show_property(HWND window, const form::Control& control, form::Property property) {
  using form::Property;
  const bool is_list = control.kind() == form::Kind::ComboBox;
  switch (property) {
    case Property::Caption:
      if (!shows_text(control.kind())) show_text(window, control.caption());
      break;
    case Property::Text:
      if (control.kind() == form::Kind::TextBox || (is_list && control.editable())) show_text(window, control.text());
      break;
    case Property::List:
      if (is_list) show_list(window, control);
      break;
    case Property::ListIndex:
      if (is_list) show_selection(window, control);
      break;
    case Property::Value:
      show_value(window, control);
      break;
    case Property::Enabled:
      EnableWindow(window, control.enabled());
      break;
    case Property::Visible:
      ShowWindow(window, control.visible() ? SW_SHOWNA : SW_HIDE);
      break;
    case Property::Maximum:
      show_maximum(window, control);
      break;
    case Property::Colours:
      if (control.kind() == form::Kind::ProgressBar) show_colours(window, control);
      break;
    case Property::ToolTip:
    case Property::Font:
    case Property::Tag:
    case Property::Picture:
    case Property::Bounds:
    case Property::Interval:
      break;
  }
}

std::string window_text(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return support::narrow(text);
}

}  // namespace wizard::win32
