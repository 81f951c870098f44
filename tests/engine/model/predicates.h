// Random conditions of the dialect over the tables p and q of the partition test.
#pragma once

#include <random>
#include <string>

namespace engine::test::model {

class Predicates {
 public:
  /// `joined`: the columns of q are there, too.
  Predicates(unsigned seed, bool joined) : random_(seed), joined_(joined) {}

  /// Levels of conditions within conditions at most.
  std::string condition(int levels);

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  template <typename List>
  std::string one_of(const List& list) {
    return list[below(static_cast<int>(std::size(list)))];
  }
  std::string number(int levels);
  std::string text(int levels);
  std::string comparison(int levels);
  std::string subselect(int levels);

  std::mt19937 random_;
  bool joined_;
};

}  // namespace engine::test::model
