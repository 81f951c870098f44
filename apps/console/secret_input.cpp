#include "apps/console/secret_input.h"

namespace console {

SecretLine::State SecretLine::take(char byte) {
  constexpr char control_c = 3, control_d = 4, control_u = 21, rubout = 127;
  switch (byte) {
    case '\r':
    case '\n':
      return State::Done;
    case control_c:
      return State::GivenUp;
    case control_d:
      return text_.empty() ? State::GivenUp : State::Open;
    case '\b':
    case rubout:
      take_back();
      return State::Open;
    case control_u:
      text_.clear();
      return State::Open;
    default:
      if (static_cast<unsigned char>(byte) >= 0x20) text_ += byte;
      return State::Open;
  }
}

void SecretLine::take_back() {
  constexpr unsigned char continuation_bits = 0xC0, continuation = 0x80;
  while (!text_.empty()) {
    const auto last = static_cast<unsigned char>(text_.back());
    text_.pop_back();
    if ((last & continuation_bits) != continuation) return;
  }
}

}  // namespace console
