// The console programs as a task scheduler or a service starts them: without any output.
#include <windows.h>
// gtest.h must come after windows.h.
#include <gtest/gtest.h>

#include "support/win32/wide.h"
#include "tests/support/temporary_folder.h"

namespace apps_test {
namespace {

/// The exit code of a program that gets these standard handles and no console.
DWORD exit_code_with(HANDLE standard, const std::string& command_line) {
  std::wstring text = support::wide(command_line);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = start.hStdOutput = start.hStdError = standard;
  PROCESS_INFORMATION started{};
  if (CreateProcessW(nullptr, text.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr, nullptr, &start,
                     &started) == 0)
    return 1000 + GetLastError();
  WaitForSingleObject(started.hProcess, 60000);
  DWORD code = 999;
  GetExitCodeProcess(started.hProcess, &code);
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
  return code;
}

TEST(WithoutStandardHandles, WhatWasWrittenDecidesTheExitCode) {
  for (const HANDLE standard : {HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
    const support::testing::TemporaryFolder folder;
    const std::string create = "\"" BUILD_DIR "/bin/patientdb.exe\" create \"" + folder.windows("neu.das") +
                               "\" --name Müller --firstname Jörg";
    EXPECT_EQ(exit_code_with(standard, create), 0u);
    EXPECT_EQ(folder.file_count(), 1u);
    EXPECT_EQ(exit_code_with(standard, create), 1u) << "it is there already";
  }
}

}  // namespace
}  // namespace apps_test
