// Help, manual page and completion come from one source, so none has a command or an option that another lacks.
#include <regex>
#include <set>

#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

using testing::IsSupersetOf;

/// The first group of each match.
std::set<std::string> found_in(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

std::set<std::string> commands() { return found_in(run_patientdb({"--help"}).out, "\n  ([a-z-]+) +[A-Z]"); }

TEST(Manual, TellsEveryCommandAndOptionThatHelpTells) {
  const std::string manual = run_patientdb({"--manual"}).out;
  const std::set<std::string> told = found_in(manual, "\n\\.SS ([a-z-]+)\n");
  EXPECT_EQ(told, commands());
  ASSERT_THAT(told, IsSupersetOf({"create", "export", "import"}));
  for (const std::string& command : told) {
    const std::size_t begin = manual.find("\n.SS " + command + "\n");
    const std::string section = manual.substr(begin, manual.find("\n.S", begin + 1) - begin);
    std::set<std::string> options;
    for (std::string name : found_in(section, "\n\\.TP\n\\\\fB(\\\\-\\\\-[a-z\\\\-]+)\\\\fR")) {
      options.insert(std::regex_replace(name, std::regex("\\\\"), ""));
    }
    EXPECT_EQ(options, found_in(run_patientdb({command, "--help"}).out, "\n  (--[a-z-]+)")) << command;
  }
  EXPECT_THAT(manual, AllOf(StartsWith(".TH PATIENTDB 1"), HasSubstr("PATIENTDB_PASSWORD"), HasSubstr("EXIT STATUS")));
}

TEST(Completion, KnowsTheSameCommandsAndOptions) {
  const std::string bash = run_patientdb({"--completion", "bash"}).out;
  const std::string powershell = run_patientdb({"--completion", "powershell"}).out;
  for (const std::string& command : commands()) {
    const std::set<std::string> options = found_in(run_patientdb({command, "--help"}).out, "\n  (--[a-z-]+)");
    EXPECT_EQ(found_in(*found_in(bash, "\n      " + command + "\\) words='([^']*)' ;;\n").begin(), "(--[a-z-]+)"),
              options);
    EXPECT_EQ(found_in(*found_in(powershell, "\n    '" + command + "' = '([^']*)'\n").begin(), "(--[a-z-]+)"), options);
  }
  EXPECT_EQ(run_patientdb({"--completion", "fish"}).code, 2);
}

TEST(Version, IsToldByBothPrograms) {
  const std::string version = run_patientdb({"--version"}).out;
  EXPECT_TRUE(std::regex_match(version, std::regex("patientdb [0-9.]+, layout 4\\.[0-9]+\n"))) << version;
  EXPECT_THAT(run_batch({"--version"}).out, StartsWith("firststeps_batch "));
  for (const std::string code : {"0 done", "1 failed", "2 wrong usage"}) {
    EXPECT_THAT(run_patientdb({"--help"}).out, HasSubstr(code));
    EXPECT_THAT(run_batch({"--help"}).out, HasSubstr(code));
  }
}

}  // namespace
}  // namespace apps_test
