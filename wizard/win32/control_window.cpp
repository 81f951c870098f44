#include "wizard/win32/control_window.h"

#include <commctrl.h>

#include "support/encoding.h"
#include "support/win32/wide.h"
#include "wizard/win32/container_window.h"
#include "wizard/win32/step_list_window.h"

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
  return {L"EDIT", WS_TABSTOP | WS_GROUP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, WS_EX_CLIENTEDGE};
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
    case form::Kind::StepIndicator:
      return {step_list_class, 0};
    case form::Kind::Timer:
      break;
  }
  return {nullptr, 0};
}

}  // namespace

bool shows_text(const form::Control& control) {
  return control.kind() == form::Kind::TextBox || control.kind() == form::Kind::ComboBox;
}

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
  const std::string& text = shows_text(control) ? control.text() : control.caption();
  return CreateWindowExW(native.extended_style, native.name, support::wide(text).c_str(), native.style | WS_CHILD,
                         place.left, place.top, place.right - place.left, place.bottom - place.top, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

}  // namespace wizard::win32
