// A line, such as a password, that a person types at the terminal and that is not shown there.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace console {

/// Puts the line together key by key.
class SecretLine {
 public:
  enum class State { Open, Done, GivenUp };

  /// Takes one byte of a key in UTF-8. Enter ends the line. Ctrl+C gives it up, and so does Ctrl+D in an empty line.
  /// Backspace removes the last character, Ctrl+U all of them. Other control characters are ignored.
  State take(char byte);
  const std::string& text() const noexcept { return text_; }

 private:
  void take_back();

  std::string text_;
};

/// The function for Console::ask_secret; empty if standard input is no terminal. The typed text is neither shown nor
/// left in the terminal. The terminal's settings are restored afterwards, also if the user gives up.
std::function<std::optional<std::string>(std::string_view prompt)> secret_input();

}  // namespace console
