// What a screen reader is told by the accessible objects of the windows, in their order: role, name and description.
#include <windows.h>
// oleacc.h needs windows.h before it.
#include <oleacc.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "support/win32/wide.h"
#include "tests/window/window_test.h"
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

std::string take(BSTR text) {
  if (text == nullptr) return {};
  std::string taken = support::narrow(text);
  SysFreeString(text);
  std::erase(taken, '\r');
  for (std::size_t at = 0; (at = taken.find('\n', at)) != std::string::npos;) taken.replace(at, 1, "\\n");
  return taken;
}

/// "role: name (description)"; empty for what is hidden from screen readers.
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
  return line;
}

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

std::string told_on_page(HWND window) {
  Told told{window, {}};
  EnumChildWindows(window, note_what_is_told, reinterpret_cast<LPARAM>(&told));
  return told.lines;
}

using AccessibleTest = WindowTest;

TEST_F(AccessibleTest, AFindingStandsAtItsFieldAndIsToldWithIt) {
  const wizard::win32::ComSession com;
  const ScreenReader reader;
  start();
  enter_patient();
  wizard().go_to("Therapie_BP");
  const auto field = [&] { return told_of(wizard().control("txtvorgabe(4)")); };
  const std::string name = "field: Oberer Wert (systolisch) von, mmHg";
  EXPECT_EQ(field(), name);
  wizard().type("txtvorgabe(4)", "7");
  EXPECT_EQ(told_on_page(wizard().window()).find("alert"), std::string::npos) << "it is still typed into";
  press_key(VK_TAB);
  EXPECT_TRUE(wait_until([&] { return field().starts_with(name + " (Achtung: "); })) << field();
  EXPECT_NE(told_on_page(wizard().window()).find("alert: Achtung: "), std::string::npos);
  RECT place, note;
  GetWindowRect(wizard().control("txtvorgabe(4)"), &place);
  const HWND below = GetWindow(wizard().control("txtvorgabe(4)"), GW_HWNDNEXT);
  GetWindowRect(below, &note);
  EXPECT_GE(note.top, place.bottom - 1);
  EXPECT_LT(note.top, place.bottom + place.bottom - place.top);
  wizard().type("txtvorgabe(4)", "110");
  EXPECT_TRUE(wait_until([&] { return field() == name; })) << field();
  EXPECT_EQ(told_on_page(wizard().window()).find("alert"), std::string::npos) << "it is mended";
}

}  // namespace
}  // namespace window_driver
