// The animated pictures: what each tick of the timer changes on the page shown.
#pragma once

#include <string_view>

#include "wizard/context.h"

namespace wizard {

/// Starts the timer with the page's interval, or leaves it stopped on a page that has no animation.
void start_tip(form::Form& form, std::string_view step);

/// One tick. The number of the picture shown is kept in the tag of a sequence's first picture, so an animation goes on
/// where it was when its page is shown again.
void tick_tip(Context& context, std::string_view step);

}  // namespace wizard
