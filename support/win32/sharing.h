// Calls that fail because another program, a virus scanner or an indexer, has the file open for a moment.
#pragma once

#include <windows.h>

namespace support {

/// Calls until it gives true; ten times within a second and a half where the system says "access denied", "sharing
/// violation" or "lock violation", else once. The last error is that of the last call.
template <typename Call>
bool with_patience(Call call) {
  constexpr int most_calls = 10;
  constexpr DWORD wait_step = 30;
  for (DWORD made = 1;; ++made) {
    if (call()) return true;
    const DWORD reason = GetLastError();
    const bool may_pass =
        reason == ERROR_ACCESS_DENIED || reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION;
    if (!may_pass || made == most_calls) return false;
    Sleep(wait_step * made);
    SetLastError(reason);
  }
}

}  // namespace support
