// Selecting the entry of a list that a stored value means.
#pragma once

#include <string_view>

#include "wizard/form/form.h"

namespace form {

/// Selects the entry with this item data where the value is a whole number, else the one with this text, whatever its
/// case. Without a match an editable combo box shows the value itself and any other nothing. A combo box without
/// entries is disabled unless it is editable. Never raises.
void MatchList(Control& list, std::string_view value);

}  // namespace form
