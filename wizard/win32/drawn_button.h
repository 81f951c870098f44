// Push buttons and options, drawn in the colours of the dark scheme and of high contrast, and group boxes, drawn in
// any: the caption stands on the middle of its frame in every resolution.
#pragma once

#include <windows.h>

namespace wizard::win32 {

bool is_group_box(HWND button);

/// The subclass procedure of a button: draws it in these schemes, else leaves it to the system.
LRESULT CALLBACK drawn_button_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id, DWORD_PTR);

}  // namespace wizard::win32
