// The lines of a field that is only read. A line that is too long for the field goes on in the next one, behind an
// indent, so that nobody takes it for an entry of its own. Native fields have no such indent.
#pragma once

#include <windows.h>

namespace wizard::win32 {

/// From now on the field (several lines, read only) breaks its lines anew for every text, size, font and margin. What
/// the user copies from it has the lines as they were given. If the system refuses, the field stays as it is.
void hang_lines(HWND field);

}  // namespace wizard::win32
