// How the window's controls present themselves to screen readers. What the native controls say of themselves stays,
// but for their name, description and whether they are to be spoken of.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "wizard/spoken.h"

namespace wizard::win32 {

/// What is said of a window now.
using SpokenOf = std::function<Spoken()>;

/// From now on until it is destroyed, the window answers with this. `role`: one of ROLE_SYSTEM_…; nothing: the native
/// control's own.
void make_accessible(HWND window, SpokenOf what, std::optional<long> role = std::nullopt);

/// Tells screen readers that what is said of the window is another now.
void announce_change(HWND window);
/// Tells them that the window has something to say at once.
void announce_alert(HWND window);

}  // namespace wizard::win32
