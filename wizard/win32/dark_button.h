// Push buttons, options and group boxes, drawn in the colours of the dark scheme.
#pragma once

#include <windows.h>

namespace wizard::win32 {

/// The subclass procedure of a button: draws it while the dark scheme is in force, else leaves it to the system.
LRESULT CALLBACK dark_button_procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id, DWORD_PTR);

}  // namespace wizard::win32
