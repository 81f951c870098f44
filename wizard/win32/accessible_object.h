// The accessible object of one window: the system's own, with a name, a description and perhaps a role from us.
#pragma once

#include <windows.h>
// oleacc.h needs windows.h before it.
#include <oleacc.h>

#include <optional>

#include "wizard/win32/accessible_control.h"
#include "wizard/win32/com.h"

namespace wizard::win32 {

/// Null where the system has none for the window.
Com<IAccessible> accessible_object(HWND window, SpokenOf what, std::optional<long> role);

}  // namespace wizard::win32
