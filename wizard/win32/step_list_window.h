// The list of the wizard's steps: those that are done, the one that is shown, those to come. Nobody types or clicks
// into it; its window text says in words where the user is.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace wizard::win32 {

inline constexpr wchar_t step_list_class[] = L"FirstStepsStepList";
/// Of a line, in pixels at 96 to the inch and the usual text size.
inline constexpr int step_height = 20;

void register_step_list_class(HINSTANCE instance);

/// What the window shows from now on. `current`: place in the list, -1 for none.
void show_steps(HWND list, std::vector<std::wstring> steps, int current);

}  // namespace wizard::win32
