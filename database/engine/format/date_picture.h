// Pictures of date parts: "dd.mm.yyyy hh:nn:ss", "dddd, d. mmmm yyyy", "h:nn AM/PM", "c", "ww".
#pragma once

#include <string>

#include "database/engine/date.h"
#include "database/engine/format/format_picture.h"

namespace engine::pictures {

/// Raises 5 for a part that it does not know. Precondition: the date is in the calendar.
std::string print_date(Date date, const Picture& picture, WeekRule weeks);

}  // namespace engine::pictures
