// Shows long work as one line of the terminal, which is written over again and again: a bar, what is being done, how
// much of it, and the time that is left. Shows nothing if the output is no terminal, and nothing for work of less than
// half a second. Ctrl+C meanwhile is a request; the work looks at it where it can stop.
#pragma once

#include <chrono>
#include <string>

#include "apps/console/console.h"
#include "database/environment.h"

namespace console {

/// While this object lives, the first Ctrl+C is only noted, and the next one ends the program as usual. Only one such
/// object may exist at a time.
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

class ProgressLine : public database::Progress {
 public:
  /// With an `interrupt`, Ctrl+C ends the work at its next row. Without one, the work does not hear of Ctrl+C.
  explicit ProgressLine(Console& console, const Interrupt* interrupt = nullptr);
  ~ProgressLine() override { clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void start(std::string_view caption, std::int32_t maximum) override;
  void set_caption(std::string_view caption) override;
  void set_value(std::int32_t value) override;
  void finish() override;
  void upgrade_step(std::int16_t version, std::string_view table) override;
  bool interrupted() const override { return interrupt_ != nullptr && Interrupt::wanted(); }
  /// Removes the line, so that something else can be written. The next call shows it again.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool is_due(Clock::time_point now) const;
  void show(double share, std::string_view what, const std::string& how_much, Clock::time_point now);
  std::string time_left(std::int32_t value, Clock::time_point now) const;

  Console& console_;
  const Interrupt* interrupt_;
  Clock::time_point shown_;    ///< the pause before the next showing begins at this moment
  Clock::duration pause_;      ///< first the delay before the line is shown, later the time between two showings
  Clock::time_point started_;  ///< when the work began
  std::size_t width_ = 0;      ///< number of characters in the line
  std::string caption_;
  std::int32_t maximum_ = 0;
};

/// "0:07", "12:30", "1:02:03"
std::string duration_text(std::chrono::seconds duration);

}  // namespace console
