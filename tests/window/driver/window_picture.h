// Pictures of a window as it stands on the screen.
#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string>

namespace window_driver {

/// Writes the window, frame included, as a PNG file at a host path. False where that does not work.
bool save_picture(HWND window, const std::string& path);

/// How often each colour is seen in the window, frame included, and all that lies over it.
std::map<COLORREF, std::size_t> colours_of(HWND window);

/// How many different colours the window shows.
std::size_t count_colours(HWND window);

/// Tells what the window shows from what it showed before.
std::size_t checksum(HWND window);

}  // namespace window_driver
