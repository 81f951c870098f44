// The outer window: a real dialog, so that Tab, access keys, Enter, Esc and the return of the focus work as everywhere.
#pragma once

#include <windows.h>

namespace wizard::win32 {

/// Creates it, hidden, without controls. `data` reaches the procedure with WM_INITDIALOG.
HWND create_frame_window(HINSTANCE instance, const wchar_t* title, DLGPROC procedure, void* data);

/// Gives the window this inner size (pixels) and the middle of the screen.
void centre_frame_window(HWND window, SIZE inner);

/// The size of the whole window for an inner size, both in pixels of this resolution.
SIZE frame_size(SIZE inner, UINT dpi);

/// Gives the window its icons, in the sizes of this resolution (pixels to the inch).
void set_frame_icons(HWND window, UINT dpi);

}  // namespace wizard::win32
