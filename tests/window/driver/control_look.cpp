#include "tests/window/driver/control_look.h"

#include "support/win32/wide.h"
#include "wizard/win32/com.h"
#include "wizard/win32/look.h"
// These need windows.h before them.
#include <commctrl.h>
#include <oleacc.h>

namespace window_driver {
namespace {

using wizard::win32::TextStyle;

/// The room that a control needs beside its text, in pixels at 96 to the inch.
struct Room {
  int width, height;
};

/// The mark of an option, the edge of a button, the arrow of a list.
Room room_beside_text(form::Kind kind) {
  switch (kind) {
    case form::Kind::OptionButton:
      return {18, 0};
    case form::Kind::Button:
      return {10, 6};
    case form::Kind::ComboBox:
      return {24, 4};
    case form::Kind::TextBox:
      return {8, 0};
    default:
      return {0, 0};
  }
}

bool wraps(form::Kind kind) {
  return kind == form::Kind::Label || kind == form::Kind::OptionButton || kind == form::Kind::Button ||
         kind == form::Kind::ChartOption;
}

SIZE measure(const std::string& text, HFONT font, int width, bool wrapped) {
  const wizard::win32::WindowContext context(nullptr);
  const wizard::win32::Selection selection(context.get(), font);
  RECT needed{0, 0, width, 0};
  const std::wstring characters = support::wide(text);
  DrawTextW(context.get(), characters.c_str(), -1, &needed, DT_CALCRECT | (wrapped ? DT_WORDBREAK : DT_SINGLELINE));
  return {needed.right, needed.bottom};
}

bool shows_fixed_text(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::Label:
    case form::Kind::Button:
    case form::Kind::OptionButton:
    case form::Kind::ComboBox:
    case form::Kind::ChartOption:
      return true;
    case form::Kind::TextBox:
      return control.editable();
    default:
      return false;
  }
}

std::string name_of_system(HWND window) {
  IAccessible* object = nullptr;
  if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                        reinterpret_cast<void**>(&object))))
    return {};
  const wizard::win32::Com<IAccessible> owner(object);
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR name = nullptr;
  if (object->get_accName(self, &name) != S_OK || name == nullptr) return {};
  const std::string text = support::narrow(name);
  SysFreeString(name);
  return text;
}

std::string label_before(HWND window) {
  const HWND before = GetWindow(window, GW_HWNDPREV);
  wchar_t name[16];
  const bool is_label = GetClassNameW(before, name, 16) != 0 && lstrcmpiW(name, WC_STATICW) == 0;
  return is_label ? shown_text(before) : std::string();
}

/// A chart's picture keeps its shape; its title gets the room below.
int picture_height(const WizardProgram& program, int width) {
  const form::Bounds& design = program.described("optThumb(0)").bounds();
  return MulDiv(width, design.height, design.width);
}

}  // namespace

std::string cut_text(const WizardProgram& program, const form::Control& control, const std::string& font) {
  if (!shows_fixed_text(control)) return {};
  const HWND window = program.control(control.path());
  const UINT dpi = program.resolution();
  RECT inside;
  GetClientRect(window, &inside);
  const Room room = room_beside_text(control.kind());
  const int width = inside.right - MulDiv(room.width, static_cast<int>(dpi), 96);
  int height = inside.bottom - MulDiv(room.height, static_cast<int>(dpi), 96);
  if (control.kind() == form::Kind::ChartOption) height -= picture_height(program, width);
  static wizard::win32::Fonts fonts;
  const std::string text = program.text(control.path());
  const SIZE needed =
      measure(text, fonts.font(font, wizard::win32::text_style(control), dpi), width, wraps(control.kind()));
  if (needed.cx <= width && needed.cy <= height) return {};
  return control.path() + " (" + text + ") needs " + std::to_string(needed.cx) + " x " + std::to_string(needed.cy) +
         " and has " + std::to_string(width) + " x " + std::to_string(height) + "; ";
}

/// Wine gives a list no name; Windows uses the label before it, as for a field.
std::string accessible_name(HWND window) {
  const std::string name = name_of_system(window);
  return name.empty() ? label_before(window) : name;
}

}  // namespace window_driver
