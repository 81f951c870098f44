// Small operations on single controls of a form (module "code").
#pragma once

#include <cstdint>
#include <string_view>

#include "wizard/form/form.h"

namespace form {

/// Selects the entry that a stored value means: the one with this item data where the value is a whole number, else the
/// one with this text, whatever its case. Without a match an editable box shows the value itself and any other box
/// nothing. A box without entries is disabled unless it takes free text. Never throws.
void MatchList(Control& list, std::string_view value);

/// Bar colour as the platform counts it (0xBBGGRR); the background becomes white. Never throws.
void SetProgressbarColor(Control& bar, std::uint32_t colour);

}  // namespace form
