// What the accessible objects of windows tell a screen reader.
#pragma once

#include <windows.h>

#include <string>

namespace window_driver {

/// "role: name (description) [state, …]", the description being the group of an option; empty for what is hidden from
/// screen readers. States that depend on where the focus is are left out. Needs a ComSession.
std::string told_of(HWND window);

/// The same of every visible window in another one, in their order, one a line, indented by how deep they lie.
std::string told_in(HWND window);

}  // namespace window_driver
