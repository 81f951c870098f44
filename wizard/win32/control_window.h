// The window of one control: which native class shows a kind of control, and how its properties are shown.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

#include "wizard/form/form.h"

namespace wizard::win32 {

/// Containers are windows of their own: frames that are pages, and picture boxes. Other frames are group boxes.
bool is_container(const form::Control& control);

/// The dialog id of the control at a position of the form's order: automation and tests find it by this. The buttons
/// Next and Cancel have those that Enter and Esc ask for.
int control_id(const form::Control& control, std::size_t position);

/// Creates the native control, hidden, with its text; null for a control that nobody sees (timer).
HWND create_control_window(const form::Control& control, HWND parent, int id, const RECT& place);

/// Shows one property in the window; those that need more than the window (font, bounds, picture, tip) it leaves alone.
void show_property(HWND window, const form::Control& control, form::Property property);

/// Empty where it has none.
std::string window_text(HWND window);

}  // namespace wizard::win32
