// Upgrades that are interrupted: the process is killed, or the disk is full. The file is as it was, and later upgrades
// as if it had never been touched.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

#include "database/version_record.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

constexpr int killed = 9;

class KilledAt : public Progress {
 public:
  explicit KilledAt(std::int16_t version) : version_(version) {}
  void start(std::string_view, std::int32_t) override {}
  void set_caption(std::string_view) override {}
  void set_value(std::int32_t) override {}
  void finish() override {}
  void upgrade_step(std::int16_t version, std::string_view) override {
    if (version >= version_) _exit(killed);
  }

 private:
  std::int16_t version_;
};

class Interrupted : public OldLayout {
 protected:
  Interrupted() {
    environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
    file = old_database(0);
    // More rows than SQLite keeps in memory, so that half a transaction reaches the disk.
    const Opened opened = open(file);
    engine::Transaction transaction{*opened.database};
    opened.database->execute("UPDATE glucose SET Comment=string(200, 'x')");
    for (int doubling = 0; doubling < 12; ++doubling) {
      opened.database->execute(
          "INSERT INTO glucose (vDate, vTime, [Value], Event, Comment) SELECT vDate, vTime, [Value], Event, Comment "
          "FROM glucose");
    }
    transaction.commit();
    opened.database->close();
    content = read_file(file);
  }

  /// Runs the work in a process of its own and returns its exit code.
  template <typename Work>
  int run_apart(Work work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status);
  }

  /// The content after an opening, which undoes what a process left half done.
  std::string content_after_opening() const {
    open(file).database->open_recordset("db_info");
    return read_file(file);
  }

  std::string file, content;
};

TEST_F(Interrupted, LeavesTheFileAsItWasAtWhicheverStepTheProcessIsKilled) {
  const char* const wanted = std::getenv("FAULT_POINTS");
  const bool all_steps = wanted == nullptr || std::string_view(wanted) == "all";
  const std::int16_t stride = all_steps ? 1 : 9;
  int runs = 0, half_done = 0;
  for (std::int16_t version = 3; version <= 60; version = static_cast<std::int16_t>(version + stride), ++runs) {
    const int code = run_apart([&] {
      KilledAt killer{version};
      environment.progress = &killer;
      return upgrade(file);
    });
    ASSERT_EQ(code, killed) << version;
    half_done += read_file(file) == content ? 0 : 1;
    ASSERT_TRUE(content_after_opening() == content) << version;
  }
  EXPECT_GT(half_done, runs / 3) << "too little had reached the disk to be undone";
  ASSERT_EQ(upgrade(file), 1);
  const std::string untouched = path("untouched.das");
  write_file(untouched, content);
  ASSERT_EQ(upgrade(untouched), 1);
  EXPECT_TRUE(row_lines(*open(file).database) == row_lines(*open(untouched).database));
}

TEST_F(Interrupted, LeavesTheFileAsItWasWhereverTheDiskIsFull) {
  int refused = 0;
  for (rlim_t limit = 1 << 16;; limit += limit / 3) {
    const int written = run_apart([&] {
      std::signal(SIGXFSZ, SIG_IGN);
      const rlimit full{limit, limit};
      setrlimit(RLIMIT_FSIZE, &full);
      return upgrade(file);
    });
    if (written == 1) break;
    ++refused;
    ASSERT_EQ(written, 0);
    ASSERT_TRUE(content_after_opening() == content) << limit;
  }
  EXPECT_GT(refused, 10);
  EXPECT_EQ(stored_version(file), current_minor_version);
}

}  // namespace
}  // namespace database::testing
