// What a user does to a native control, as an event of the form.
#pragma once

#include <windows.h>

#include <optional>

#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {

struct FormEvent {
  enum class Kind { Click, Change } kind;
  form::Control* control;
};

/// Positions of the form's scroll bar, in twips: what is seen at once, and the last position.
struct ScrollRange {
  int page, last;
};

/// Takes over into the form what a notification (BN_CLICKED, EN_CHANGE, CBN_SELCHANGE …) tells of. Nothing where it
/// tells nothing that the form wants to know.
std::optional<FormEvent> event_of_command(const ShownControl& shown, UINT notification);

/// Takes over a request (SB_LINEUP …) to a scroll bar that reaches so far, `thumb` being where the user holds it.
FormEvent event_of_scroll(form::Control& bar, ScrollRange range, int request, int thumb);

}  // namespace wizard::win32
