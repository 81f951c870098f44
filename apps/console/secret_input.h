// A line that a person types at the terminal and that is not shown there, such as a password.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace console {

/// The line, put together key by key.
class SecretLine {
 public:
  enum class State { Open, Done, GivenUp };

  /// Takes a key's byte of UTF-8: Enter ends the line, Ctrl+C, and Ctrl+D in an empty line, give it up, Backspace takes
  /// the last character back, and Ctrl+U all of them. Other control characters are passed over.
  State take(char byte);
  const std::string& text() const noexcept { return text_; }

 private:
  void take_back();

  std::string text_;
};

/// See Console::ask_secret. Empty where standard input is no terminal. What was typed is neither echoed nor left in the
/// terminal; its settings are put back afterwards, also when the user gives up.
std::function<std::optional<std::string>(std::string_view prompt)> secret_input();

}  // namespace console
