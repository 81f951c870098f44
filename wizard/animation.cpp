#include "wizard/animation.h"

#include <algorithm>
#include <charconv>

#include "support/encoding.h"

namespace wizard {

namespace {

/// Where the hand (or a button that it presses) stands while a picture is shown, in twips.
struct Place {
  std::int32_t left, top;
};

void move_to(form::Form& form, std::string_view control, Place place) {
  form::Control& picture = form.at(control);
  form::Bounds bounds = picture.bounds();
  bounds.left = place.left;
  bounds.top = place.top;
  picture.set_bounds(bounds);
}

/// Shows the next picture of the sequence, the first one on the first tick, and returns its number.
int show_next(form::Form& form, std::string_view pictures) {
  const auto members = form.array(pictures);
  form::Control& first = *members.front();
  int shown = -1;
  std::from_chars(first.tag().data(), first.tag().data() + first.tag().size(), shown);
  shown = (shown + 1) % static_cast<int>(members.size());
  for (form::Control* picture : members) picture->set_visible(picture->index() == shown);
  first.set_tag(std::to_string(shown));
  return shown;
}

void blink(form::Form& form, std::string_view picture) {
  form::Control& mark = form.at(picture);
  mark.set_visible(!mark.visible());
}

void blink_sidebar(Context& context) { blink(context.form, "imgSidebarMark"); }
void blink_start_page(Context& context) { blink(context.form, "imgStartMark"); }

void walk_navigation_bar(Context& context) {
  static constexpr Place hand[] = {{615, 2040}, {615, 2640}, {615, 3240}, {615, 3840}, {615, 4440}};
  const auto shown = static_cast<std::size_t>(show_next(context.form, "imgNavBar"));
  move_to(context.form, "imgCursorHand", hand[shown]);
}

void split_window(Context& context) {
  static constexpr Place button[] = {{4080, 1620}, {2160, 1620}, {4080, 1620}};
  static constexpr Place hand[] = {{4080, 1740}, {2220, 1740}, {3360, 2880}};
  static constexpr long text[] = {4873, 4874, 4874};
  const auto shown = static_cast<std::size_t>(show_next(context.form, "imgSplitWindow"));
  move_to(context.form, "imgSplitBtn", button[shown]);
  move_to(context.form, "imgcursorHand2", hand[shown]);
  context.show_text(context.form.at("lblSplitDesc"), text[shown]);
}

/// The hand nears the place where the picture holds the window, at most one stride a tick, and never leaves the square
/// of 2500 twips.
void drag_statistics(Context& context) {
  static constexpr Place target[] = {{855, 1800}, {1440, 2100}, {2040, 2400}, {2400, 2460}};
  static constexpr long text[] = {4876, 4876, 4877, 4877};
  static constexpr std::int32_t stride = 900, limit = 2500;
  const auto shown = static_cast<std::size_t>(show_next(context.form, "imgStatWindow"));
  const form::Bounds from = context.form.at("imgMouseHand3").bounds();
  const auto nearer = [](std::int32_t now, std::int32_t wanted) {
    return std::min(now + std::clamp(wanted - now, -stride, stride), limit);
  };
  move_to(context.form, "imgMouseHand3", {nearer(from.left, target[shown].left), nearer(from.top, target[shown].top)});
  context.show_text(context.form.at("lblStatdesc"), text[shown]);
}

struct Animation {
  std::string_view step;
  int interval;  ///< milliseconds
  void (*tick)(Context&);
};

constexpr Animation animations[] = {
    {"sidebar", 600, blink_sidebar},    {"start", 600, blink_start_page},     {"tip_navbar", 1000, walk_navigation_bar},
    {"tip_splits", 2000, split_window}, {"tip_stats", 2000, drag_statistics},
};

const Animation* animation_of(std::string_view step) {
  const auto match = std::ranges::find_if(
      animations, [&](const Animation& animation) { return support::equal_ignoring_case(animation.step, step); });
  return match == std::end(animations) ? nullptr : match;
}

}  // namespace

void start_animation(form::Form& form, std::string_view step) {
  const Animation* animation = animation_of(step);
  form.at("Timer1").set_interval(0);
  if (animation) form.at("Timer1").set_interval(animation->interval);
}

void advance_animation(Context& context, std::string_view step) {
  if (const Animation* animation = animation_of(step)) animation->tick(context);
}

}  // namespace wizard
