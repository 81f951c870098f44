// Native controls in the scheme's colours. Windows has no dark look of its own for most of them that a program may ask
// for: with the dark scheme and with high contrast, buttons, options, group boxes, fields and lists are drawn here,
// otherwise by the system.
#pragma once

#include <windows.h>

#include "wizard/win32/colours.h"

namespace wizard::win32 {

/// From now on the control (a button, a field, a list or a scroll bar; others are left alone) follows the scheme.
void dress_control(HWND control);

/// After the scheme has changed: the frame window and all in it.
void dress_again(HWND frame);

/// Answers a message WM_CTLCOLOR… about the control: sets the colours, returns the brush of its ground. The text has
/// the given colour unless the control is typed into or cannot be used.
HBRUSH colour_control(HDC target, UINT message, HWND control, Colour text, Colour ground);

/// True for the messages that colour_control() answers.
constexpr bool asks_for_colours(UINT message) {
  return message == WM_CTLCOLORSTATIC || message == WM_CTLCOLOREDIT || message == WM_CTLCOLORBTN ||
         message == WM_CTLCOLORLISTBOX;
}

}  // namespace wizard::win32
