// What the accessible objects of windows tell a screen reader.
#pragma once

#include <windows.h>

#include <string>

namespace window_driver {

/// "role: name (description) [state, …]", with the group of an option as its description. Empty for what is hidden from
/// screen readers. States that depend on the focus are left out. Needs a ComSession.
std::string told_of(HWND window);

/// The same for every visible window in another one, in their order, one in each line, indented by depth.
std::string told_in(HWND window);

}  // namespace window_driver
