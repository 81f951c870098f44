#include "wizard/win32/native_events.h"

#include <algorithm>

#include "wizard/win32/control_properties.h"

namespace wizard::win32 {
namespace {

std::optional<FormEvent> click(const ShownControl& shown) {
  form::Control& control = *shown.control;
  if (!control.enabled()) return std::nullopt;
  if (control.kind() == form::Kind::OptionButton) {
    // The focus alone also clicks an option; only one that is chosen by it has been clicked.
    if (SendMessageW(shown.window, BM_GETCHECK, 0, 0) != BST_CHECKED) return std::nullopt;
    control.set_value(1);
  }
  if (control.kind() == form::Kind::ChartOption) control.set_value(control.value() == 0 ? 1 : 0);
  return FormEvent{FormEvent::Kind::Click, &control};
}

std::optional<FormEvent> type(const ShownControl& shown) {
  if (!shown.control->editable()) return std::nullopt;
  shown.control->set_text(window_text(shown.window));
  return FormEvent{FormEvent::Kind::Change, shown.control};
}

FormEvent choose(const ShownControl& shown) {
  shown.control->set_list_index(static_cast<int>(SendMessageW(shown.window, CB_GETCURSEL, 0, 0)));
  return {FormEvent::Kind::Click, shown.control};
}

int scrolled_to(const form::Control& bar, ScrollRange range, int request, int thumb) {
  const int page = range.page, line = page / 8;
  switch (request) {
    case SB_LINEUP:
      return bar.value() - line;
    case SB_LINEDOWN:
      return bar.value() + line;
    case SB_PAGEUP:
      return bar.value() - page;
    case SB_PAGEDOWN:
      return bar.value() + page;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
      return thumb;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return range.last;
    default:
      return bar.value();
  }
}

}  // namespace

std::optional<FormEvent> event_of_command(const ShownControl& shown, UINT notification) {
  switch (shown.control->kind()) {
    case form::Kind::Button:
    case form::Kind::OptionButton:
    case form::Kind::ChartOption:
      if (notification == BN_CLICKED) return click(shown);
      break;
    case form::Kind::TextBox:
      if (notification == EN_CHANGE) return type(shown);
      break;
    case form::Kind::ComboBox:
      if (notification == CBN_EDITCHANGE) return type(shown);
      if (notification == CBN_SELCHANGE) return choose(shown);
      break;
    default:
      break;
  }
  return std::nullopt;
}

FormEvent event_of_scroll(form::Control& bar, ScrollRange range, int request, int thumb) {
  bar.set_value(std::clamp(scrolled_to(bar, range, request, thumb), 0, range.last));
  return {FormEvent::Kind::Change, &bar};
}

}  // namespace wizard::win32
