// What an owner does with a whole file, interrupted at every point: the old or the new file is left.
#include "database/keeping/backup.h"
#include "database/keeping/compact.h"
#include "tests/faults/database_faults.h"

namespace database::testing {
namespace {

class KeepingFaults : public DatabaseFaults {
 protected:
  KeepingFaults() {
    environment.now = [] { return engine::date_from(2024, 5, 17, 8, 30, 0); };
  }
  /// A file with deleted rows, so that it can become smaller.
  std::string file_with_gaps() {
    std::string file = patient_database();
    const std::string comment(250, 'x');
    for (int i = 0; i < 40; ++i) {
      execute(file, {"INSERT INTO glucose (vDate, Comment) VALUES (#1/2/2024#, '" + comment + "')"});
    }
    execute(file, {"DELETE * FROM glucose WHERE ID>5"});
    return file;
  }
  /// True if `work` raises no error of the engine's.
  static bool succeeds(const std::function<void()>& work) {
    try {
      work();
      return true;
    } catch (const support::RuntimeError&) {
      return false;
    }
  }
  void expect_files(Ended ended, std::size_t count) const {
    if (ended == Ended::Died) return;
    EXPECT_EQ(files().size(), count) << ::testing::PrintToString(files());
  }
};

TEST_F(KeepingFaults, ACompactedFileIsTheOldOneOrTheNewOne) {
  const std::string file = file_with_gaps(), before = state(file);
  std::string after;
  const auto run = [&] { return succeeds([&] { keeping::compact_file(environment, file, environment.password); }); };
  const auto check = [&](Ended ended) {
    const std::string found = state(file);
    if (after.empty()) after = found;
    EXPECT_TRUE(found == before || found == after) << "in between";
    if (ended == Ended::Succeeded) {
      EXPECT_EQ(found, after);
    }
    expect_files(ended, 1);
  };
  faults::sweep("compacting", {restoring(), {}, run, check});
  EXPECT_NE(after, before) << "the numbers were set back";
}

TEST_F(KeepingFaults, ABackupIsWholeOrNotThere) {
  const std::string file = patient_database(), copy = path("copy.das");
  const std::string before = state(file);
  sweep_over_new_file("a backup", copy, [&] {
    return succeeds([&] { keeping::back_up(environment, file, environment.password, copy, false); });
  });
  EXPECT_EQ(state(file), before);
}

TEST_F(KeepingFaults, ABackupThatReplacesAnotherIsTheOldOneOrTheNewOne) {
  const std::string file = patient_database(), copy = patient_database("copy.das");
  execute(copy, {"DELETE * FROM patdat"});
  const std::string before = state(copy), after = state(file);
  const auto run = [&] {
    return succeeds([&] { keeping::back_up(environment, file, environment.password, copy, true); });
  };
  const auto check = [&](Ended ended) {
    const std::string found = state(copy);
    EXPECT_TRUE(found == before || found == after) << "in between";
    if (ended == Ended::Succeeded) {
      EXPECT_EQ(found, after);
    }
    EXPECT_EQ(state(file), after);
    expect_files(ended, 2);
  };
  faults::sweep("a backup over another", {restoring(), {}, run, check});
}

TEST_F(KeepingFaults, ARestoredFileIsTheOldOneOrTheNewOneAndTheOldOneIsKept) {
  const std::string backup = patient_database("backup.das"), file = patient_database();
  const std::string kept = path("patient.replaced-20240517-083000.das");
  execute(file, {"DELETE * FROM patdat"});
  const std::string before = state(file), after = state(backup);
  const auto run = [&] { return succeeds([&] { keeping::restore(environment, backup, environment.password, file); }); };
  const auto check = [&](Ended ended) {
    const std::string found = state(file), old = state(kept);
    EXPECT_TRUE(found == before || found == after) << "in between";
    EXPECT_TRUE(old == before || (old == no_file && found == before)) << "the old one is gone";
    if (ended == Ended::Succeeded) {
      EXPECT_EQ(found, after);
    }
    EXPECT_EQ(state(backup), after);
    expect_files(ended, found == after ? 3 : 2);
  };
  faults::sweep("restoring", {restoring(), {}, run, check});
}

}  // namespace
}  // namespace database::testing
