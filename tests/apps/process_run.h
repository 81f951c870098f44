// The programs as processes of their own, on POSIX.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "tests/apps/program_run.h"

namespace apps_test {

class ProcessTest : public testing::Test {
 protected:
  /// What a shell that runs `command` says; $BIN is the programs' folder.
  Outcome shell(const std::string& command) const;

  TemporaryFolder folder_, outside_;
};

/// Runs `body` in a child process and returns what it returns; -1 where the process died.
int in_child(const std::function<int()>& body);

/// The same without the rights of root, who may write everywhere.
int as_ordinary_user(const std::function<int()>& body);
inline constexpr unsigned ordinary_user = 65534;

}  // namespace apps_test
