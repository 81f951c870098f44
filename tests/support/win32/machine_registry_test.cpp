// The machine's own registry, below a key that is removed again.
#include <windows.h>
// shlwapi.h needs windows.h before it.
#include <shlwapi.h>

#include "support/host.h"
#include "support/win32/win32_registry.h"
#include "tests/support/registry_contract.h"

namespace support::testing {

namespace {

const std::string& scratch_key() {
  static const std::string key = "Software\\FirstStepsTest" + std::to_string(GetCurrentProcessId());
  return key;
}

void remove_key(const std::string& key) { SHDeleteKeyA(HKEY_CURRENT_USER, key.c_str()); }

void set_value(const char* name, DWORD type, std::string_view bytes) {
  RegSetKeyValueA(HKEY_CURRENT_USER, scratch_key().c_str(), name, type, bytes.data(), static_cast<DWORD>(bytes.size()));
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Machine, RegistryContract,
                         ::testing::Values(RegistryCase{"registry",
                                                        [](const TemporaryFolder&) { return host_registry(); },
                                                        scratch_key(), remove_key}),
                         [](const auto& row) { return row.param.name; });

TEST(Win32Registry, ReadsWhatOtherProgramsStored) {
  using namespace std::string_view_literals;
  set_value("no nul", REG_SZ, "abc");
  set_value("expand", REG_EXPAND_SZ, "%TEMP%\0"sv);
  set_value("empty", REG_SZ, "");
  set_value("number", REG_DWORD, "\x05\0\0\0"sv);
  set_value("binary", REG_BINARY, "\x05\0"sv);
  const std::tuple<const char*, bool, std::string> rows[] = {
      {"no nul", true, "abc"}, {"expand", true, "%TEMP%"},   {"empty", true, "default"},
      {"number", true, "5"},   {"binary", false, "default"},
  };
  const Win32Registry registry;
  for (const auto& [name, was_read, text] : rows) {
    std::string output = "default";
    EXPECT_EQ(ReadRegValue(registry, RootKey::CurrentUser, scratch_key(), name, output), was_read) << name;
    EXPECT_EQ(output, text) << name;
  }
  remove_key(scratch_key());
}

}  // namespace support::testing
