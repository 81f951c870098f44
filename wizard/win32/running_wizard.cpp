#include "wizard/win32/running_wizard.h"

// sddl.h needs windows.h before it.
#include <sddl.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <memory>

#include "support/encoding.h"
#include "support/win32/wide.h"

namespace wizard::win32 {
namespace {

/// A name of a length that the system takes, whatever the text (FNV-1a).
std::wstring claim_name(const wchar_t* scope, std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char byte : support::to_lower(text)) {
    hash ^= static_cast<unsigned char>(byte);
    hash *= 0x100000001b3U;
  }
  wchar_t name[48];
  std::swprintf(name, std::size(name), L"%ls\\FirstStepsOf%016llX", scope, static_cast<unsigned long long>(hash));
  return name;
}

/// The user's security identifier as text; empty where the system does not tell it.
std::string user_identifier() {
  HANDLE opened = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) return {};
  const std::unique_ptr<void, decltype(&CloseHandle)> token(opened, CloseHandle);
  alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
  DWORD size = 0;
  wchar_t* text = nullptr;
  if (GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()), &size) == 0 ||
      ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text) == 0)
    return {};
  const std::unique_ptr<wchar_t, decltype(&LocalFree)> owned(text, LocalFree);
  return support::narrow(text);
}

/// Whether the call before has found one that is there. One that an administrator has started keeps others out, but is
/// there.
bool was_claimed() {
  const DWORD result = GetLastError();
  return result == ERROR_ALREADY_EXISTS || result == ERROR_ACCESS_DENIED;
}

}  // namespace

std::wstring claim_of_all_sessions(std::string_view installation) {
  return claim_name(L"Global", user_identifier() + "|" + std::string(installation));
}

RunningWizard::RunningWizard(std::string_view installation)
    : claim_(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(LONG),
                                claim_name(L"Local", installation).c_str())),
      first_(!was_claimed()) {
  // Only the first of a session asks the others: two that start at once would each see the other one's claim.
  if (first_) {
    all_sessions_ = CreateMutexW(nullptr, FALSE, claim_of_all_sessions(installation).c_str());
    first_is_elsewhere_ = was_claimed();
    first_ = !first_is_elsewhere_;
  }
  if (claim_ != nullptr)
    shared_ = static_cast<volatile LONG*>(MapViewOfFile(claim_, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, sizeof(LONG)));
}

RunningWizard::~RunningWizard() {
  set_window(nullptr);
  if (shared_ != nullptr) UnmapViewOfFile(const_cast<LONG*>(shared_));
  if (claim_ != nullptr) CloseHandle(claim_);
  if (all_sessions_ != nullptr) CloseHandle(all_sessions_);
}

void RunningWizard::set_window(HWND window) const noexcept {
  if (first_ && shared_ != nullptr) InterlockedExchange(shared_, HandleToLong(window));
}

HWND RunningWizard::window_of_first() const noexcept {
  return shared_ == nullptr ? nullptr : static_cast<HWND>(LongToHandle(InterlockedOr(shared_, 0)));
}

bool RunningWizard::show_first() const {
  constexpr DWORD pause = 50, patience = 5000;  // milliseconds
  if (first_is_elsewhere_) return false;
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
