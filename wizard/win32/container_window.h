// The window of a container: a page, or the frame around the charts. Showing a page is showing one window. It paints
// the page's background and passes on to the window around it what its controls report.
#pragma once

#include <windows.h>

namespace wizard::win32 {

inline constexpr wchar_t container_class[] = L"FirstStepsContainer";

/// Before the first container is created; once is enough.
void register_container_class(HINSTANCE instance);

}  // namespace wizard::win32
