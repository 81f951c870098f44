// The list of pages to walk through, and where in it the user is.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace wizard {

class StepList {
 public:
  /// The edition's default list, or the "|"-separated configured one where it is not empty. Starts at step 0.
  void choose(bool professional, std::string_view configured);

  const std::vector<std::string>& names() const noexcept { return names_; }
  int current() const noexcept { return current_; }
  int last() const noexcept { return static_cast<int>(names_.size()) - 1; }
  /// The name at a position; empty outside the list.
  std::string name_at(int position) const;

  /// Moves to the next entry that is not passed over; beyond the list means finished.
  void forward();
  /// Moves back likewise; stops at the first entry.
  void back();

  /// Position of the first entry whose first `characters` characters are `name`, whatever its case; -1 if there is
  /// none.
  int find(std::string_view name, std::size_t characters) const;
  /// True where the list has this entry and the navigation does not pass over it.
  bool offers(std::string_view name) const;
  /// Offers the page again, or leaves it out by appending "-" to its name. No entry: nothing happens.
  void offer(std::string_view name, bool offered);
  /// Appends "-" to the entry as a mark that its page is built; the navigation does not pass over it for that.
  void mark_built(int position);

 private:
  bool passed_over(int position) const;

  std::vector<std::string> names_;
  int current_ = 0;
  int built_ = -1;
};

}  // namespace wizard
