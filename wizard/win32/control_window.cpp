#include "wizard/win32/control_window.h"

#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <string>

#include "wizard/win32/text.h"

namespace wizard::win32 {
namespace {

constexpr wchar_t container_class[] = L"FirstStepsContainer";

struct NativeClass {
  const wchar_t* name;
  DWORD style;
  DWORD extended_style = 0;
};

/// A text from the user's data is shown as it is; "&" marks an access key in designed texts only.
bool is_designed_text(const form::Control& control) { return control.tag().starts_with("L"); }

NativeClass label_class(const form::Control& control) {
  return {L"STATIC", SS_LEFT | SS_EDITCONTROL | (is_designed_text(control) ? 0U : SS_NOPREFIX)};
}

NativeClass text_class(const form::Control& control) {
  if (control.editable()) return {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
  return {L"EDIT", WS_TABSTOP | WS_VSCROLL | WS_BORDER | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL};
}

NativeClass native_class(const form::Control& control, bool first_of_group) {
  const DWORD group = first_of_group ? WS_GROUP | WS_TABSTOP : 0;
  switch (control.kind()) {
    case form::Kind::Label:
      return label_class(control);
    case form::Kind::Button:
      return {L"BUTTON", WS_TABSTOP | WS_GROUP | BS_PUSHBUTTON | BS_NOTIFY};
    case form::Kind::OptionButton:
      return {L"BUTTON", group | BS_AUTORADIOBUTTON | BS_MULTILINE | BS_TOP | BS_NOTIFY};
    case form::Kind::ChartOption:
      return {L"BUTTON", WS_TABSTOP | WS_GROUP | BS_CHECKBOX | BS_NOTIFY};
    case form::Kind::TextBox:
      return text_class(control);
    case form::Kind::ComboBox:
      return {L"COMBOBOX", WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL |
                               (control.editable() ? DWORD{CBS_DROPDOWN} : DWORD{CBS_DROPDOWNLIST})};
    case form::Kind::Image:
      return {L"STATIC", SS_OWNERDRAW};
    case form::Kind::ScrollBar:
      return {L"SCROLLBAR", SBS_VERT};
    case form::Kind::ProgressBar:
      return {PROGRESS_CLASSW, PBS_SMOOTH};
    case form::Kind::Frame:
      if (!is_container(control)) return {L"BUTTON", WS_GROUP | BS_GROUPBOX};
      return {container_class, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
    case form::Kind::PictureBox:
      return {container_class, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
    case form::Kind::Timer:
      break;
  }
  return {nullptr, 0};
}

void show_text(HWND window, const std::string& text) {
  if (window_text(window) != text) SetWindowTextW(window, wide(text).c_str());
}

void show_list(HWND window, const form::Control& control) {
  SendMessageW(window, WM_SETREDRAW, FALSE, 0);
  SendMessageW(window, CB_RESETCONTENT, 0, 0);
  for (const form::ListItem& item : control.items()) {
    SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(item.text).c_str()));
  }
  SendMessageW(window, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(window, nullptr, TRUE);
}

void show_selection(HWND window, const form::Control& control) {
  if (selected_entry(window) != control.list_index()) {
    SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(control.list_index()), 0);
  }
}

void show_value(HWND window, const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::OptionButton:
    case form::Kind::ChartOption:
      SendMessageW(window, BM_SETCHECK, control.value() != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
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
void show_maximum(HWND window, const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::ScrollBar: {
      const int page = control.bounds().height;
      SCROLLINFO info{
          sizeof info, SIF_RANGE | SIF_PAGE, 0, control.maximum() + page - 1, static_cast<UINT>(page), 0, 0};
      SetScrollInfo(window, SB_CTL, &info, TRUE);
      break;
    }
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

void register_container_class(HINSTANCE instance, WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = container_class;
  RegisterClassExW(&description);
}

HWND create_control_window(const form::Control& control, HWND parent, int id, bool first_of_group) {
  const NativeClass native = native_class(control, first_of_group);
  if (native.name == nullptr) return nullptr;
  const std::string& name = control.kind() == form::Kind::TextBox || control.kind() == form::Kind::ComboBox
                                ? control.text()
                                : control.caption();
  return CreateWindowExW(native.extended_style, native.name, wide(name).c_str(), native.style | WS_CHILD, 0, 0, 10, 10,
                         parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

void show_property(HWND window, const form::Control& control, form::Property property) {
  using form::Property;
  switch (property) {
    case Property::Caption:
      show_text(window, control.caption());
      break;
    case Property::Text:
      if (control.kind() != form::Kind::ComboBox || control.editable()) show_text(window, control.text());
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
    case Property::List:
      show_list(window, control);
      break;
    case Property::ListIndex:
      show_selection(window, control);
      break;
    case Property::Maximum:
      show_maximum(window, control);
      break;
    case Property::Colours:
      show_colours(window, control);
      break;
    case Property::ToolTip:
    case Property::Font:
    case Property::Tag:
    case Property::Picture:
    case Property::Bounds:
    case Property::Interval:
      break;  // the window that holds the control sees to these
  }
}

int checked_value(HWND window) { return SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0; }

int selected_entry(HWND window) { return static_cast<int>(SendMessageW(window, CB_GETCURSEL, 0, 0)); }

}  // namespace wizard::win32
