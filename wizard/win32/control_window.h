// The native window of one control: which class and style show a kind of control.
#pragma once

#include <windows.h>

#include <cstddef>

#include "wizard/form/form.h"

namespace wizard::win32 {

/// Containers are windows of their own: frames that are pages, and picture boxes. Other frames are group boxes.
bool is_container(const form::Control& control);

/// True for a control whose window holds its text; the windows of all others hold the caption.
bool shows_text(const form::Control& control);

/// The dialog id of the control at a position of the form's order: automation and tests find it by this. The buttons
/// Next and Cancel have those that Enter and Esc ask for.
int control_id(const form::Control& control, std::size_t position);

/// Creates the native control, hidden, with its text or caption, at a place in its parent (pixels); null for a control
/// that nobody sees (timer).
HWND create_control_window(const form::Control& control, HWND parent, int id, const RECT& place);

}  // namespace wizard::win32
