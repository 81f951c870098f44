#include "apps/console/secret_input.h"

#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>

namespace console {
namespace {

/// While this object lives, keys arrive one by one and are not shown. Ctrl+C arrives as a key, too: otherwise it could
/// end the program and leave a terminal that shows nothing.
class UnseenKeys {
 public:
  UnseenKeys() {
    is_set_ = tcgetattr(STDIN_FILENO, &before_) == 0;
    if (!is_set_) return;
    termios unseen = before_;
    unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ICANON | ISIG);
    unseen.c_cc[VMIN] = 1;
    unseen.c_cc[VTIME] = 0;
    is_set_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen) == 0;
  }
  ~UnseenKeys() {
    if (is_set_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }
  UnseenKeys(const UnseenKeys&) = delete;
  UnseenKeys& operator=(const UnseenKeys&) = delete;
  bool is_set() const noexcept { return is_set_; }

 private:
  termios before_{};
  bool is_set_ = false;
};

std::optional<std::string> read_line() {
  SecretLine line;
  for (SecretLine::State state = SecretLine::State::Open; state != SecretLine::State::Done;) {
    char byte = 0;
    const ssize_t count = read(STDIN_FILENO, &byte, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;
    state = line.take(byte);
    if (state == SecretLine::State::GivenUp) return std::nullopt;
  }
  return line.text();
}

std::optional<std::string> ask(std::string_view prompt) {
  const UnseenKeys unseen;
  // Reading nothing is better than showing a password.
  if (!unseen.is_set()) return std::nullopt;
  std::cerr << prompt << std::flush;
  std::optional<std::string> text = read_line();
  std::cerr << std::endl;
  return text;
}

}  // namespace

std::function<std::optional<std::string>(std::string_view)> secret_input() {
  if (isatty(STDIN_FILENO) != 1) return {};
  return ask;
}

}  // namespace console
