// The window of one control: which native class shows a kind of control, and how its properties are shown and read.
#pragma once

#include <windows.h>

#include "wizard/form/form.h"

namespace wizard::win32 {

/// Containers are windows of their own, so that showing a page is showing one window: frames without a caption and
/// picture boxes.
bool is_container(const form::Control& control);

/// The class of container windows; registered once.
void register_container_class(HINSTANCE instance, WNDPROC procedure);

/// Creates the native control, hidden and without a place; null for a control that nobody sees (timer).
HWND create_control_window(const form::Control& control, HWND parent, int id, bool first_of_group);

/// Shows one property in the window. What the window shows already is left alone.
void show_property(HWND window, const form::Control& control, form::Property property);

/// What a user has done to the window, as a value of the form.
int checked_value(HWND window);
int selected_entry(HWND window);

}  // namespace wizard::win32
