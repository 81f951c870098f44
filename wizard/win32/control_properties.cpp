#include "wizard/win32/control_properties.h"

#include <commctrl.h>
#include <uxtheme.h>

#include <utility>
#include <vector>

#include "support/win32/wide.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/step_list_window.h"

namespace wizard::win32 {
namespace {

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

void show_step_list(HWND window, const form::Control& control) {
  std::vector<std::wstring> names;
  for (const form::ListItem& item : control.items()) names.push_back(support::wide(item.text));
  show_steps(window, std::move(names), control.list_index());
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

void show_maximum(HWND window, const form::Control& control) {
  switch (control.kind()) {
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

void show_property(HWND window, const form::Control& control, form::Property property) {
  using form::Property;
  const bool is_list = control.kind() == form::Kind::ComboBox;
  switch (property) {
    case Property::Caption:
      if (!shows_text(control)) show_text(window, control.caption());
      break;
    case Property::Text:
      if (control.kind() == form::Kind::TextBox || (is_list && control.editable())) show_text(window, control.text());
      break;
    case Property::List:
      if (is_list) show_list(window, control);
      if (control.kind() == form::Kind::StepIndicator) show_step_list(window, control);
      break;
    case Property::ListIndex:
      if (is_list) show_selection(window, control);
      if (control.kind() == form::Kind::StepIndicator) show_step_list(window, control);
      break;
    case Property::Value:
      show_value(window, control);
      break;
    case Property::Enabled:
      // What a scroll bar can do depends on the room that the window has.
      if (control.kind() != form::Kind::ScrollBar) EnableWindow(window, control.enabled());
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

void show_scroll_range(HWND bar, int page, int last, int position) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = last + page - 1;
  info.nPage = static_cast<UINT>(page);
  info.nPos = position;
  EnableWindow(bar, last > 0);
  SetScrollInfo(bar, SB_CTL, &info, TRUE);
}

std::string window_text(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return support::narrow(text);
}

}  // namespace wizard::win32
