#include "database/engine/embedded/jet_sql/collation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace engine::embedded::jet_sql {
namespace {

TEST(CompareTexts, OrdersSignsDigitsLettersAndAccentsBehindThePlainLetter) {
  const std::vector<std::string> ascending = {"",   "-",  "_x", "€",  "0", "10", "9", "a", "ä", "aa",  "äa",
                                              "ab", "äb", "az", "b",  "c", "ç",  "o", "ö", "ø", "œ",   "s",
                                              "š",  "ß",  "sa", "sz", "u", "ü",  "z", "ž", "я", "\xFF"};
  for (std::size_t i = 0; i < ascending.size(); ++i) {
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      const int order = compare_texts(ascending[i], ascending[j]);
      EXPECT_EQ(i < j, order < 0) << ascending[i] << " and " << ascending[j];
      EXPECT_EQ(i == j, order == 0) << ascending[i] << " and " << ascending[j];
    }
  }
}

TEST(CompareTexts, DisregardsCaseAndTrailingBlanks) {
  struct Pair {
    const char* left;
    const char* right;
    bool equal;
  };
  constexpr Pair pairs[] = {
      {"ÄÖÜŠŽŒŸ", "äöüšžœÿ", true}, {"a  ", "a", true}, {"  ", "", true},  {"é", "É", true},
      {"a", " a", false},           {"é", "e", false},  {"×", "÷", false}, {"ß", "ss", false},
      {"a", "a\t", false},          {"Ð", "d", false},  {"þ", "Þ", true},  {"aB c ", "Ab C", true}};
  for (const Pair& pair : pairs) {
    EXPECT_EQ(pair.equal, compare_texts(pair.left, pair.right) == 0) << pair.left << " and " << pair.right;
  }
}

}  // namespace
}  // namespace engine::embedded::jet_sql
