#include "apps/console/secret_input.h"

#include <windows.h>

#include "support/encoding.h"

namespace console {
namespace {

/// While this object lives, keys arrive one by one and are not shown. Ctrl+C arrives as a key, too: otherwise it could
/// end the program and leave a console that shows nothing.
class UnseenKeys {
 public:
  explicit UnseenKeys(HANDLE input) : input_(input) {
    is_set_ = GetConsoleMode(input_, &before_) != 0 && SetConsoleMode(input_, 0) != 0;
  }
  ~UnseenKeys() {
    if (is_set_) SetConsoleMode(input_, before_);
  }
  UnseenKeys(const UnseenKeys&) = delete;
  UnseenKeys& operator=(const UnseenKeys&) = delete;
  bool is_set() const noexcept { return is_set_; }

 private:
  HANDLE input_;
  DWORD before_ = 0;
  bool is_set_ = false;
};

/// Writes to the console itself, wherever standard output leads.
void show(std::wstring_view text) {
  const HANDLE screen =
      CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (screen == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  WriteConsoleW(screen, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  CloseHandle(screen);
}

/// One character in UTF-8; empty if there is no more input.
std::string read_character(HANDLE input) {
  std::u16string units;
  do {
    wchar_t unit = 0;
    DWORD count = 0;
    if (ReadConsoleW(input, &unit, 1, &count, nullptr) == 0 || count == 0) return {};
    units += static_cast<char16_t>(unit);
  } while (units.back() >= 0xD800 && units.back() < 0xDC00);
  return support::utf8_from_utf16(units);
}

std::optional<std::string> read_line(HANDLE input) {
  SecretLine line;
  for (;;) {
    const std::string character = read_character(input);
    if (character.empty()) return std::nullopt;
    for (const char byte : character) {
      const SecretLine::State state = line.take(byte);
      if (state == SecretLine::State::GivenUp) return std::nullopt;
      if (state == SecretLine::State::Done) return line.text();
    }
  }
}

std::optional<std::string> ask(std::string_view prompt) {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  const UnseenKeys unseen(input);
  // Reading nothing is better than showing a password.
  if (!unseen.is_set()) return std::nullopt;
  const std::u16string units = support::utf16_from_utf8(prompt);
  show(std::wstring(units.begin(), units.end()));
  std::optional<std::string> text = read_line(input);
  show(L"\r\n");
  return text;
}

}  // namespace

std::function<std::optional<std::string>(std::string_view)> secret_input() {
  DWORD mode = 0;
  if (GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) == 0) return {};
  return ask;
}

}  // namespace console
