#include "wizard/win32/focus.h"

#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {
namespace {

/// A button is none: Enter is to go on, not to press it. The chosen one of a group of options stands for the group:
/// focusing another would choose it.
bool is_filled_in(const form::Control& control) {
  switch (control.kind()) {
    case form::Kind::ChartOption:
      return true;
    case form::Kind::ComboBox:
      // A list of ways to go is no choice that is stored.
      return control.tag() != "way";
    case form::Kind::TextBox:
      return control.editable();
    case form::Kind::OptionButton:
      return control.value() != 0;
    default:
      return false;
  }
}

}  // namespace

const form::Control* first_field(const form::Form& form) {
  for (const auto& control : form.controls()) {
    const bool on_page = control->parent() != nullptr;
    if (on_page && control->enabled() && is_filled_in(*control) && is_seen(*control)) return control.get();
  }
  return form.find("Command1", 0);
}

}  // namespace wizard::win32
