// The steps that the user walks through, and the user's position among them. A step is the name of a page; a "-" in it
// means that the navigation skips it. Positions count from 0.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wizard {

class StepList {
 public:
  /// Takes a list separated by "|" and starts at its first step.
  void choose(std::string_view steps);

  const std::vector<std::string>& names() const noexcept { return names_; }
  /// Position of the current step; behind last() when the walk has ended.
  int current() const noexcept { return current_; }
  int last() const noexcept { return static_cast<int>(names_.size()) - 1; }
  /// True if the navigation skips the step at this position.
  bool passed_over(int position) const;
  /// The step at a position; empty outside of the list.
  std::string name_at(int position) const;

  /// Moves to the next step that is not skipped, or behind the last one.
  void forward();
  /// Moves back in the same way; stops at the first step.
  void back();

  /// Moves to a position of the list.
  void go_to(int position) { current_ = position; }

  // The step of a page is the first one that begins with the page's name, in any case.

  /// True if the list has a step for the page and the navigation does not skip it.
  bool offers(std::string_view page) const;
  /// Position of the page's step; -1 if there is none.
  int find(std::string_view page) const;
  /// Offers the page again, or leaves it out by appending "-" to its name. Does nothing if there is no step for it.
  void offer(std::string_view page, bool offered);
  /// Appends "-" to the step as a mark that its page is built; the navigation does not skip it because of that mark.
  /// Outside of the list nothing happens.
  void mark_built(int position);

 private:
  std::vector<std::string> names_;
  int current_ = 0;
  int built_ = -1;
};

}  // namespace wizard
