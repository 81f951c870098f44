#include "tests/window/driver/accessible_tree.h"

// oleacc.h needs windows.h before it.
#include <oleacc.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "support/win32/wide.h"
#include "wizard/win32/com.h"

namespace window_driver {
namespace {

struct RoleName {
  long role;
  std::string_view name;
};

constexpr RoleName role_names[] = {
    {ROLE_SYSTEM_ALERT, "alert"},          {ROLE_SYSTEM_CHECKBUTTON, "check box"}, {ROLE_SYSTEM_CLIENT, "client"},
    {ROLE_SYSTEM_COMBOBOX, "combo box"},   {ROLE_SYSTEM_GRAPHIC, "graphic"},       {ROLE_SYSTEM_GROUPING, "group"},
    {ROLE_SYSTEM_PROGRESSBAR, "progress"}, {ROLE_SYSTEM_PROPERTYPAGE, "page"},     {ROLE_SYSTEM_PUSHBUTTON, "button"},
    {ROLE_SYSTEM_RADIOBUTTON, "option"},   {ROLE_SYSTEM_SCROLLBAR, "scroll bar"},  {ROLE_SYSTEM_STATICTEXT, "text"},
    {ROLE_SYSTEM_TEXT, "field"},
};

struct StateName {
  long state;
  std::string_view name;
};

constexpr StateName state_names[] = {
    {STATE_SYSTEM_CHECKED, "chosen"},
    {STATE_SYSTEM_UNAVAILABLE, "disabled"},
    {STATE_SYSTEM_READONLY, "read only"},
};

std::string take(BSTR text) {
  if (text == nullptr) return {};
  std::string taken = support::narrow(text);
  SysFreeString(text);
  std::erase(taken, '\r');
  for (std::size_t at = 0; (at = taken.find('\n', at)) != std::string::npos;) taken.replace(at, 1, "\\n");
  return taken;
}

std::string states_of(long state) {
  std::string words;
  for (const auto& [bit, word] : state_names)
    if ((state & bit) != 0) words += (words.empty() ? " [" : ", ") + std::string(word);
  return words.empty() ? words : words + "]";
}

}  // namespace

std::string told_of(HWND window) {
  void* found = nullptr;
  if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, &found)))
    return "nothing";
  const wizard::win32::Com<IAccessible> object(static_cast<IAccessible*>(found));
  VARIANT self{}, role{}, state{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR name = nullptr, description = nullptr;
  object->get_accState(self, &state);
  if ((state.lVal & STATE_SYSTEM_INVISIBLE) != 0) return {};
  object->get_accRole(self, &role);
  object->get_accName(self, &name);
  object->get_accDescription(self, &description);
  const auto* row = std::ranges::find(role_names, role.lVal, &RoleName::role);
  std::string line = row == std::end(role_names) ? std::to_string(role.lVal) : std::string(row->name);
  line += ": " + take(name);
  if (const std::string more = take(description); !more.empty()) line += " (" + more + ")";
  return line + states_of(state.lVal);
}

namespace {

struct Told {
  HWND top;
  std::string lines;
};

BOOL CALLBACK note_what_is_told(HWND window, LPARAM data) {
  auto& told = *reinterpret_cast<Told*>(data);
  if (IsWindowVisible(window) == 0) return TRUE;
  const std::string line = told_of(window);
  if (line.empty()) return TRUE;
  std::string indent = "  ";
  for (HWND at = GetParent(window); at != told.top && at != nullptr; at = GetParent(at)) indent += "  ";
  told.lines += indent + line + "\n";
  return TRUE;
}

}  // namespace

std::string told_in(HWND window) {
  Told told{window, {}};
  EnumChildWindows(window, note_what_is_told, reinterpret_cast<LPARAM>(&told));
  return told.lines;
}

}  // namespace window_driver
