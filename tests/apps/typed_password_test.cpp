// A new password is typed at a terminal, which does not show it.
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "tests/apps/process_run.h"

namespace apps_test {
namespace {

/// A program whose terminal the test controls.
class Terminal {
 public:
  explicit Terminal(const std::vector<std::string>& words) : screen_(posix_openpt(O_RDWR | O_NOCTTY)) {
    grantpt(screen_);
    unlockpt(screen_);
    child_ = fork();
    if (child_ == 0) become(words);
  }
  ~Terminal() { close(screen_); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// Reads on until the text has been shown; false if it is not shown within ten seconds.
  bool waits_for(const std::string& text) {
    constexpr int longest_wait = 10000;
    while (shown_.find(text, seen_) == std::string::npos) {
      pollfd ready{screen_, POLLIN, 0};
      std::array<char, 512> block{};
      if (poll(&ready, 1, longest_wait) != 1) return false;
      const ssize_t count = read(screen_, block.data(), block.size());
      if (count <= 0) return false;
      shown_.append(block.data(), static_cast<std::size_t>(count));
    }
    seen_ = shown_.find(text, seen_) + text.size();
    return true;
  }
  void type(const std::string& keys) const { EXPECT_EQ(write(screen_, keys.data(), keys.size()), std::ssize(keys)); }
  bool echoes() const {
    termios settings{};
    tcgetattr(screen_, &settings);
    return (settings.c_lflag & ECHO) != 0;
  }
  int exit_code() {
    waits_for("never shown");
    int status = 0;
    waitpid(child_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  const std::string& shown() const { return shown_; }

 private:
  [[noreturn]] void become(const std::vector<std::string>& words) const {
    setsid();
    const int terminal = open(ptsname(screen_), O_RDWR);
    ioctl(terminal, TIOCSCTTY, 0);
    for (const int stream : {0, 1, 2}) dup2(terminal, stream);
    unsetenv("PATIENTDB_NEW_PASSWORD");
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(arguments.front(), arguments.data());
    _exit(127);
  }

  int screen_;
  pid_t child_ = -1;
  std::string shown_;
  std::size_t seen_ = 0;
};

class TypedPassword : public ProcessTest {
 protected:
  TypedPassword() { EXPECT_EQ(run_patientdb({"create", file_}).code, 0); }
  std::vector<std::string> words() const { return {BUILD_DIR "/bin/patientdb", "password", file_}; }
  int opens_with(const std::string& word) const {
    return run_patientdb({"info", file_}, {{"PATIENTDB_PASSWORD", word}}).code;
  }
  const std::string file_ = folder_.file("typed.das");
};

TEST_F(TypedPassword, IsAskedForTwiceAndNotShown) {
  Terminal terminal(words());
  ASSERT_TRUE(terminal.waits_for("New password: ")) << terminal.shown();
  EXPECT_FALSE(terminal.echoes());
  // A wrong letter and a wrong umlaut, both taken back.
  terminal.type("geheimx\x7fü\x7f!\r");
  ASSERT_TRUE(terminal.waits_for("Once more: ")) << terminal.shown();
  terminal.type("falsch\x15geheim!\r");
  EXPECT_TRUE(terminal.waits_for("has its new password"));
  EXPECT_EQ(terminal.exit_code(), 0) << terminal.shown();
  EXPECT_THAT(terminal.shown(), AllOf(Not(HasSubstr("geheim")), Not(HasSubstr("falsch"))));
  EXPECT_EQ(opens_with("geheim!"), 0);
}

TEST_F(TypedPassword, StaysTheOldOneWhereTheTwoDifferOrTheUserGivesUp) {
  struct Case {
    std::vector<std::string> keys;
    std::string message;
  };
  const std::string before = content_of(file_);
  for (const Case& row :
       {Case{{"geheim\r", "geheimer\r"}, "are not the same"}, Case{{"geheim\r", "\x03"}, "No new password was given"},
        Case{{"\x04"}, "No new password was given"}, Case{{"\r", "\r"}, "is empty"}}) {
    Terminal terminal(words());
    for (const std::string& keys : row.keys) {
      ASSERT_TRUE(terminal.waits_for(": ")) << terminal.shown();
      terminal.type(keys);
    }
    EXPECT_EQ(terminal.exit_code(), 2) << row.message;
    EXPECT_THAT(terminal.shown(), HasSubstr(row.message));
    EXPECT_EQ(content_of(file_), before);
  }
}

TEST_F(TypedPassword, IsNotAskedForWhereTheOldOneIsWrong) {
  setenv("PATIENTDB_PASSWORD", "falsch", 1);
  Terminal terminal(words());
  EXPECT_EQ(terminal.exit_code(), 1);
  unsetenv("PATIENTDB_PASSWORD");
  EXPECT_THAT(terminal.shown(), AllOf(HasSubstr("error 3031"), Not(HasSubstr("New password"))));
}

}  // namespace
}  // namespace apps_test
