#include "tests/faults/processes.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <vector>

namespace faults {

pid_t start_process(const std::function<int()>& run) {
  std::cout.flush();
  const pid_t process = fork();
  if (process != 0) return process;
  try {
    _exit(run());
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    // The child must not run the test program's own end.
    _exit(-1);
  }
}

int wait_for(pid_t process) {
  int status = 0;
  EXPECT_EQ(waitpid(process, &status, 0), process);
  EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  return WEXITSTATUS(status);
}

void run_together(int count, const std::function<int(int process)>& run) {
  std::vector<pid_t> processes;
  for (int process = 0; process < count; ++process) {
    processes.push_back(start_process([&run, process] { return run(process); }));
  }
  for (const pid_t process : processes) EXPECT_EQ(wait_for(process), 0);
}

}  // namespace faults
