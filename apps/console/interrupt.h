// Ctrl+C as a wish instead of an end: long work asks for it where it can stop.
#pragma once

namespace console {

/// While it lives, the first Ctrl+C is noted, and the next one ends the program as ever. One at a time.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;
  static bool wanted() noexcept;

 private:
  void (*before_)(int);
};

}  // namespace console
