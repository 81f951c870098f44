// The memory that a backup and a check need does not grow with the rows.
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "tests/apps/process_run.h"

namespace apps_test {
namespace {

class KeepingMemory : public ProcessTest {
 protected:
  /// A file with 2 to the power of `doublings` glucose values.
  std::string file_of(int doublings) {
    std::string file = folder_.file(std::to_string(doublings) + ".das");
    std::vector<std::string> arguments{
        "sql", file,
        "INSERT INTO glucose (vDate, vTime, value, Comment) VALUES (#1/2/2024#, #7:30:00#, 101, 'nüchtern')"};
    for (int i = 0; i < doublings; ++i) {
      arguments.emplace_back(
          "INSERT INTO glucose (vDate, vTime, value, Comment) SELECT vDate, vTime, value, Comment "
          "FROM glucose");
    }
    EXPECT_EQ(run_patientdb({"create", file}).code, 0);
    EXPECT_EQ(run_patientdb(arguments).code, 0);
    return file;
  }
  /// The most memory that the program used, in KiB. A small Python process starts and measures it, because the memory
  /// that the starting process has at that moment counts as the program's.
  long memory_of(const std::string& words) const {
    const Outcome outcome = shell(
        "python3 -c 'import resource, subprocess, sys; subprocess.run(sys.argv[1:], check=True, "
        "stdout=subprocess.DEVNULL); print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)' "
        "$BIN/patientdb " +
        words);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return std::atol(outcome.out.c_str());
  }
};

TEST_F(KeepingMemory, OfABackupAndACheckIsThatOfARow) {
#ifdef FIRSTSTEPS_SANITIZED
  GTEST_SKIP() << "the sanitizer keeps what the program has freed";
#endif
  const std::string few = file_of(13), many = file_of(17);
  ASSERT_GT(std::filesystem::file_size(many), 8 * std::filesystem::file_size(few));
  const auto expect_same = [&](const char* what, long least, long most) {
    std::cout << what << ": " << least << " and " << most << " KiB\n";
    EXPECT_LE(static_cast<double>(most), 1.1 * static_cast<double>(least)) << what;
  };
  expect_same("backup", memory_of("backup " + few + " " + few + ".copy"),
              memory_of("backup " + many + " " + many + ".copy"));
  expect_same("check", memory_of("check " + few), memory_of("check " + many));
}

}  // namespace
}  // namespace apps_test
