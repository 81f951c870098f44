// The outer window: a real dialog, so that Tab, access keys, Enter, Esc and the return of the focus work as everywhere.
#pragma once

#include <windows.h>

namespace wizard::win32 {

/// Creates it, hidden, without controls. `data` reaches the procedure with WM_INITDIALOG.
HWND create_frame_window(HINSTANCE instance, const wchar_t* title, DLGPROC procedure, void* data);

// Inner sizes are pixels at 96 to the inch.

/// Gives the window this inner size, as far as its screen has room for it, and the middle of the screen.
void centre_frame_window(HWND window, SIZE inner);

/// The size of the whole window for an inner size, in pixels of this resolution.
SIZE frame_size(SIZE inner, UINT dpi);

/// The least size of the whole window for the least inner size, which a small screen makes smaller.
POINT least_track_size(HWND window, SIZE inner);

/// The size that the whole window gets in another resolution (pixels to the inch), so that it shows the same.
SIZE size_in_resolution(HWND window, UINT now, UINT then);

/// Gives the window its icons, in the sizes of this resolution (pixels to the inch).
void set_frame_icons(HWND window, UINT dpi);

}  // namespace wizard::win32
