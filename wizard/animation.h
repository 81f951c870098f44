// What moves on a page while it is shown.
#pragma once

#include <string_view>

#include "wizard/page.h"

namespace wizard {

/// Starts `Timer1` with the page's interval, or leaves it stopped where nothing moves or there is no page (null).
void start_animation(form::Form& form, const Page* page);

/// One tick; nothing where nothing moves.
void advance_animation(Context& context, const Page* page);

/// Shows the picture, or hides it where it is shown.
void blink(form::Form& form, std::string_view picture);

}  // namespace wizard
