#include "tests/apps/process_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace apps_test {

Outcome ProcessTest::shell(const std::string& command) const {
  const std::string out = outside_.file("out"), err = outside_.file("err");
  const std::string line = "BIN='" BUILD_DIR "/bin'; { " + command + "\n} >'" + out + "' 2>'" + err + "'";
  const int status = std::system(line.c_str());
  return {WEXITSTATUS(status), content_of(out), content_of(err)};
}

int in_child(const std::function<int()>& body) {
  const pid_t child = fork();
  if (child == 0) _exit(body());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int as_ordinary_user(const std::function<int()>& body) {
  return in_child([&] {
    if (getuid() == 0 && (setgid(ordinary_user) != 0 || setuid(ordinary_user) != 0)) return 99;
    return body();
  });
}

}  // namespace apps_test
