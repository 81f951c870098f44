// The list that a combo box drops, in the scheme's colours. The native one shows its selection in the system's colours
// alone, which the dark scheme does not have.
#pragma once

#include <windows.h>

namespace wizard::win32 {

/// From now on the combo box's list is drawn here (true) or by the system (false).
void draw_drop_list(HWND combo_box, bool drawn_here);

}  // namespace wizard::win32
