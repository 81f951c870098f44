#include "wizard/win32/running_wizard.h"

#include <cstdint>
#include <cwchar>
#include <string>

#include "support/encoding.h"

namespace wizard::win32 {
namespace {

/// A name of the session's own, of a length that the system takes, whatever the text (FNV-1a).
std::wstring name_of_claim(std::string_view installation) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char byte : support::to_lower(installation)) {
    hash ^= static_cast<unsigned char>(byte);
    hash *= 0x100000001b3U;
  }
  wchar_t name[48];
  std::swprintf(name, std::size(name), L"Local\\FirstStepsOf%016llX", static_cast<unsigned long long>(hash));
  return name;
}

}  // namespace

RunningWizard::RunningWizard(std::string_view installation)
    : claim_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(LONG),
                                name_of_claim(installation).c_str())) {
  const DWORD result = GetLastError();
  // One that an administrator has started keeps others out, but is there.
  first_ = result != ERROR_ALREADY_EXISTS && result != ERROR_ACCESS_DENIED;
  if (claim_ != nullptr)
    shared_ = static_cast<volatile LONG*>(MapViewOfFile(claim_, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, sizeof(LONG)));
}

RunningWizard::~RunningWizard() {
  set_window(nullptr);
  if (shared_ != nullptr) UnmapViewOfFile(const_cast<LONG*>(shared_));
  if (claim_ != nullptr) CloseHandle(claim_);
}

void RunningWizard::set_window(HWND window) const noexcept {
  if (first_ && shared_ != nullptr) InterlockedExchange(shared_, HandleToLong(window));
}

HWND RunningWizard::window_of_first() const noexcept {
  return shared_ == nullptr ? nullptr : static_cast<HWND>(LongToHandle(InterlockedOr(shared_, 0)));
}

bool RunningWizard::show_first() const {
  constexpr DWORD pause = 50, patience = 5000;  // milliseconds
  HWND window = window_of_first();
  for (DWORD waited = 0; window == nullptr && shared_ != nullptr && waited < patience; waited += pause) {
    Sleep(pause);
    window = window_of_first();
  }
  if (window == nullptr) return false;
  if (IsIconic(window) != 0) ShowWindow(window, SW_RESTORE);
  return SetForegroundWindow(GetLastActivePopup(window)) != 0;
}

}  // namespace wizard::win32
