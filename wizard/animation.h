// The pages whose pictures move: what each tick of the timer changes.
#pragma once

#include <string_view>

#include "wizard/context.h"

namespace wizard {

/// Starts `Timer1` with the interval of the step's page, or leaves it stopped where nothing moves on that page.
void start_animation(form::Form& form, std::string_view step);

/// One tick. The number of the picture shown is kept in the tag of a sequence's first picture, so an animation goes on
/// where it was when its page is shown again.
void advance_animation(Context& context, std::string_view step);

}  // namespace wizard
