// Pictures of a window as it is on the screen.
#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <string>

namespace window_driver {

/// Writes the window with its frame as a PNG file at a host path. False if that fails.
bool save_picture(HWND window, const std::string& path);

/// How often each colour is seen in the window, its frame, and everything that lies over it.
std::map<COLORREF, std::size_t> colours_of(HWND window);

/// How many different colours the window shows.
std::size_t count_colours(HWND window);

/// A number that changes when the window shows something else.
std::size_t checksum(HWND window);

}  // namespace window_driver
