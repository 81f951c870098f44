// A disk that is full, played by the limit that the system puts on the size of files.
#include <sys/resource.h>

#include <csignal>

#include "database/lab_definitions.h"
#include "database/opened_target.h"
#include "tests/database/database_test.h"

namespace database::testing {
namespace {

/// No file may grow beyond this many bytes while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limited{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

using FullDisk = DatabaseTest;

TEST_F(FullDisk, LeavesNoFileWhereverItStopsTheCreation) {
  int refused = 0;
  bool created = false;
  for (rlim_t limit = 1; !created; limit += 96 << 10) {
    support::RuntimeError failure{0, "none"};
    {
      const FileSizeLimit full{limit};
      created = CreatePatientDatabase(environment, path("new.das"), sample_patient(), {}, &failure) == 1;
    }
    if (created) continue;
    ++refused;
    EXPECT_EQ(failure.number(), 3043) << limit << ": " << failure.what();
    ASSERT_TRUE(files().empty()) << limit << ": " << files().front();
  }
  EXPECT_GT(refused, 2);
  EXPECT_EQ(files(), std::vector<std::string>{"new.das"});
}

TEST_F(FullDisk, LeavesThePreferencesAsTheyWereWhereverItStopsTheirExchange) {
  const std::string file = patient_database();
  const std::string lookup = path("defs.mdb");
  ASSERT_EQ(CreatePatientDatabase(environment, lookup, sample_patient(), {}), 1);
  {
    const OpenedTarget opened{environment, lookup, OpenedTarget::Access::Write};
    for (int n = 0; n < 100; ++n)
      opened.database().execute("INSERT INTO preferredInsulin ([desc], comment) VALUES ('Actrapid', '" +
                                std::string(250, 'x') + "')");
  }
  const auto tables = [&] {
    std::string counts;
    for (const std::string table : {"labdefs", "preferredInsulin", "preferredMedicals"})
      counts += rows(file, "SELECT count(*) FROM " + table).at(0) + " ";
    return counts;
  };
  int refused = 0;
  bool exchanged = false;
  for (rlim_t limit = 1; !exchanged; limit += 4 << 10) {
    {
      const FileSizeLimit full{limit};
      exchanged = db_MergePreferences(environment, file, lookup);
    }
    if (exchanged) continue;
    ++refused;
    ASSERT_EQ(tables(), "15 0 0 ") << limit;
  }
  EXPECT_GT(refused, 2);
  EXPECT_EQ(tables(), "15 100 0 ");
}

}  // namespace
}  // namespace database::testing
