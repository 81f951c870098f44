// The steps that the user walks through, and where among them they are. A step is the name of a page; a "-" in it says
// that the navigation passes over it. Positions count from 0.
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
  /// Position of the step shown; behind last() once the walk has ended.
  int current() const noexcept { return current_; }
  int last() const noexcept { return static_cast<int>(names_.size()) - 1; }
  /// True where the navigation passes over the step at a position.
  bool passed_over(int position) const;
  /// The step at a position; empty outside the list.
  std::string name_at(int position) const;

  /// Moves to the next step that is not passed over, or behind the last one.
  void forward();
  /// Moves back likewise; stops at the first step.
  void back();

  /// Moves to a position of the list.
  void go_to(int position) { current_ = position; }

  // A page's step is the first one that begins with the page's name, whatever its case.

  /// True where the list has a step for the page and the navigation does not pass over it.
  bool offers(std::string_view page) const;
  /// Position of the page's step; -1 where there is none.
  int find(std::string_view page) const;
  /// Offers the page again, or leaves it out by appending "-" to its name. Without a step for it nothing happens.
  void offer(std::string_view page, bool offered);
  /// Appends "-" to the step as a mark that its page is built; the navigation does not pass over it for that. Outside
  /// the list nothing happens.
  void mark_built(int position);

 private:
  std::vector<std::string> names_;
  int current_ = 0;
  int built_ = -1;
};

}  // namespace wizard
