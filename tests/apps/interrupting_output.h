// A terminal at which somebody presses Ctrl+C as soon as a certain text appears.
#pragma once

#include <csignal>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>

namespace apps_test {

class InterruptingOutput : public std::stringbuf {
 public:
  explicit InterruptingOutput(std::string text) : text_(std::move(text)) {}
  bool pressed() const noexcept { return pressed_; }

 protected:
  int sync() override {
    if (!pressed_ && str().find(text_) != std::string::npos) {
      pressed_ = true;
      std::raise(SIGINT);
    }
    return 0;
  }

 private:
  std::string text_;
  bool pressed_ = false;
};

}  // namespace apps_test
