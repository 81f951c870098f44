#include "wizard/animation.h"

namespace wizard {

void start_animation(form::Form& form, const Page* page) {
  form::Control& timer = form.at("Timer1");
  // Stopped first: the same interval is started anew.
  timer.set_interval(0);
  if (page) timer.set_interval(page->animation.interval);
}

void advance_animation(Context& context, const Page* page) {
  if (page && page->animation.tick) page->animation.tick(context);
}

void blink(form::Form& form, std::string_view picture) {
  form::Control& mark = form.at(picture);
  mark.set_visible(!mark.visible());
}

}  // namespace wizard
