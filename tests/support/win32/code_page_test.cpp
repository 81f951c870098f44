// What does not depend on the system's code page, and the answers of the profile calls if it is 1252.
#include <windows.h>

#include <cstdlib>

#include "support/encoding.h"
#include "support/win32/wide.h"
#include "support/win32/win32_registry.h"
#include "tests/support/ini_table.h"
#include "tests/support/temporary_folder.h"
// gtest.h must come after windows.h.
#include <gtest/gtest.h>

namespace support::testing {
namespace {

TEST(CodePage, IsTheOneThatTheseTestsWereStartedFor) {
  const char* const expected = std::getenv("EXPECTED_CODE_PAGE");
  EXPECT_EQ(GetACP(), expected != nullptr ? std::strtoul(expected, nullptr, 10) : 1252UL);
}

/// "ã" of 1252 is another letter in 1250, and none in UTF-8.
TEST(CodePage, ChangesNoTextOfTheRegistry) {
  const std::string key = "Software\\FirstStepsCodePage" + std::to_string(GetCurrentProcessId());
  Win32Registry registry;
  EXPECT_TRUE(WriteRegString(registry, RootKey::CurrentUser, key + "\\João", "São", "ã €"));
  wchar_t text[16] = {};
  DWORD size = sizeof text;
  EXPECT_EQ(
      RegGetValueW(HKEY_CURRENT_USER, wide(key + "\\João").c_str(), L"S\u00E3o", RRF_RT_REG_SZ, nullptr, text, &size),
      ERROR_SUCCESS);
  EXPECT_EQ(std::wstring(text), L"\u00E3 \u20AC");
  std::string value;
  EXPECT_TRUE(ReadRegValue(registry, RootKey::CurrentUser, key + "\\João", "São", value));
  EXPECT_EQ(value, "ã €");
  RegDeleteTreeW(HKEY_CURRENT_USER, wide(key).c_str());
}

std::string answer_of_profile_calls(const IniReadRow& row, const std::string& file) {
  const std::string section = cp1252_from_utf8(row.section), key = cp1252_from_utf8(row.key);
  std::string buffer(row.size, '\0');
  const DWORD length = GetPrivateProfileStringA(
      row.ask == Ask::Sections ? nullptr : section.c_str(), row.ask == Ask::Value ? key.c_str() : nullptr,
      cp1252_from_utf8(row.fallback).c_str(), buffer.data(), static_cast<DWORD>(row.size), ansi_path(file)->c_str());
  return utf8_from_cp1252(std::string_view(buffer).substr(0, length));
}

/// The table was measured on these calls; the test proves that it is right.
TEST(ProfileCalls, AnswerWhatTheTableSays) {
  const TemporaryFolder folder;
  int number = 0;
  for (const IniReadRow& row : ini_read_rows()) {
    if (row.wine_differs && PROFILE_CALLS_ARE_WINE) continue;
    const std::string file = folder.write("p" + std::to_string(++number) + ".ini", row.file);
    EXPECT_EQ(answer_of_profile_calls(row, file), row.answer) << row.what;
  }
}

}  // namespace
}  // namespace support::testing
