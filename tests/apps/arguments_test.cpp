#include "apps/console/arguments.h"

#include <gmock/gmock.h>

namespace {

using console::Arguments;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr console::Option options[] = {{"--json", "", ""}, {"--name", "N", ""}, {"--count", "C", ""}};

TEST(Arguments, TakesOptionsAnywhereInBothForms) {
  const std::vector<std::string> words{"file", "--name", "Müller", "--json", "-", "--count=4", "--", "--name", ""};
  const Arguments arguments(options, words);
  EXPECT_TRUE(arguments.has("--json"));
  EXPECT_EQ(arguments.value("--name"), "Müller");
  EXPECT_EQ(arguments.number("--count", 0, 1, 4), 4);
  EXPECT_THAT(arguments.operands(), ElementsAre("file", "-", "--name", ""));
  EXPECT_EQ(Arguments(options, {}).number("--count", 7, 1, 4), 7);
}

TEST(Arguments, RefusesWhatItDoesNotUnderstand) {
  struct Case {
    std::vector<std::string> words;
    std::string message;
  };
  const Case cases[] = {
      {{"--colour"}, "no option --colour"},
      {{"-x"}, "no option -x"},
      {{"--name"}, "value is missing"},
      {{"--json=yes"}, "takes no value"},
      {{"--name", "a", "--name=b"}, "given twice"},
      {{"--count", "5"}, "from 1 to 4"},
      {{"--count", "2x"}, "\"2x\""},
      {{"--count="}, "\"\""},
      {{"--count", "99999999999"}, "from 1 to 4"},
      {{"a", "b", "c"}, "\"c\" is one argument too many"},
      {{}, "Something is missing"},
  };
  for (const Case& row : cases) {
    try {
      const Arguments arguments(options, row.words);
      arguments.number("--count", 1, 1, 4);
      arguments.expect_operands(1, 2, "FILE [TABLE]");
      ADD_FAILURE() << "accepted instead of: " << row.message;
    } catch (const console::UsageError& error) {
      EXPECT_THAT(error.what(), HasSubstr(row.message));
    }
  }
}

TEST(Arguments, HelpIsAskedForOnlyBeforeTheEndOfOptions) {
  EXPECT_TRUE(console::asks_for_help(std::vector<std::string>{"file", "--help"}));
  EXPECT_FALSE(console::asks_for_help(std::vector<std::string>{"file", "--", "--help"}));
}

}  // namespace
