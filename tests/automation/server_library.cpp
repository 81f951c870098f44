#include "tests/automation/server_library.h"

#include <windows.h>

#include <bit>
#include <stdexcept>

#include "support/win32/wide.h"

namespace automation_test {
namespace {

/// The library is loaded once and never unloaded, because its counts must outlive the objects.
template <typename Function>
Function* function_of(const char* name) {
  static const HMODULE library = LoadLibraryW(server_path().c_str());
  const FARPROC found = library == nullptr ? nullptr : GetProcAddress(library, name);
  if (found == nullptr) throw std::runtime_error("the test server's library cannot be loaded");
  return std::bit_cast<Function*>(found);
}

}  // namespace

std::wstring server_path() {
  wchar_t program[MAX_PATH];
  const std::wstring path(program, GetModuleFileNameW(nullptr, program, MAX_PATH));
  return path.substr(0, path.rfind(L'\\') + 1) + support::wide(SERVER_NAME);
}

void set_strict(bool strict) { function_of<void(long)>("SetStrict")(strict ? 1 : 0); }

void repeat_server_salts() { function_of<void()>("RepeatSalts")(); }

long living_objects() { return function_of<long()>("LivingObjects")(); }

std::wstring released_objects() { return function_of<const wchar_t*()>("ReleasedObjects")(); }

}  // namespace automation_test
