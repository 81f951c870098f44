// A started program and the windows it opens.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace window_driver {

/// The longest time that anything may take for which a user waits; then the driver gives up.
inline constexpr std::chrono::seconds patience{20};

/// Asks again and again, for at most `patience`. False if the condition never became true.
bool wait_until(const std::function<bool()>& condition);

struct CloseHandleOf {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseHandleOf>;

class Process {
 public:
  /// Starts a program by its whole command line. Throws std::system_error if it cannot be started.
  explicit Process(std::string_view command_line);
  /// Ends the program if it still runs.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  HANDLE handle() const noexcept { return process_.get(); }
  bool is_running() const;
  /// The exit code; nothing if it does not end in time.
  std::optional<DWORD> wait_for_end() const;
  /// A visible top-level window of the program, of this class; null if there is none.
  HWND find_window(const wchar_t* window_class) const;

 private:
  Handle process_;
  DWORD id_ = 0;
};

}  // namespace window_driver
