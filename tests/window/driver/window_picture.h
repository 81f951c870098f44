// Pictures of a window as it stands on the screen.
#pragma once

#include <windows.h>

#include <string>

namespace window_driver {

/// Writes the window, frame included, as a PNG file at a host path. False where that does not work.
bool save_picture(HWND window, const std::string& path);

}  // namespace window_driver
