// A line that is put together key by key while nothing is shown.
#pragma once

#include <optional>
#include <string>

namespace console {

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

}  // namespace console
