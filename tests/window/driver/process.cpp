#include "tests/window/driver/process.h"

#include <algorithm>
#include <system_error>

#include "support/win32/wide.h"

namespace window_driver {

bool wait_until(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + patience;
  // Most conditions are questions to another program, which take its time, too.
  constexpr DWORD longest_pause = 25;
  for (DWORD pause = 5; !condition(); pause = std::min(pause + 1, longest_pause)) {
    if (std::chrono::steady_clock::now() > end) return false;
    Sleep(pause);
  }
  return true;
}

namespace {

PROCESS_INFORMATION start(std::string_view command_line) {
  std::wstring text = support::wide(command_line);
  STARTUPINFOW how{};
  how.cb = sizeof how;
  PROCESS_INFORMATION started{};
  if (CreateProcessW(nullptr, text.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &started) == 0)
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "cannot be started: " + std::string(command_line));
  return started;
}

}  // namespace

Process::Process(std::string_view command_line) {
  const PROCESS_INFORMATION started = start(command_line);
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
  id_ = started.dwProcessId;
}

Process::~Process() {
  if (!is_running()) return;
  TerminateProcess(process_.get(), 255);
  WaitForSingleObject(process_.get(), 5000);
}

bool Process::is_running() const { return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT; }

std::optional<DWORD> Process::wait_for_end() const {
  constexpr auto limit = static_cast<DWORD>(std::chrono::milliseconds(patience).count());
  DWORD code = 0;
  if (WaitForSingleObject(process_.get(), limit) != WAIT_OBJECT_0) return std::nullopt;
  return GetExitCodeProcess(process_.get(), &code) != 0 ? std::optional(code) : std::nullopt;
}

HWND Process::find_window(const wchar_t* window_class) const {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, window_class, nullptr)) != nullptr) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == id_ && IsWindowVisible(window) != 0) return window;
  }
  return nullptr;
}

}  // namespace window_driver
