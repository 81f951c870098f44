// Long work as one line of a terminal that is written over: a bar, what is being done, how much of it, and the time
// that is left. Nothing where the output is no terminal, and nothing for work of less than half a second. Ctrl+C while
// it lasts is a wish, which the work looks at where it can stop.
#pragma once

#include <chrono>
#include <string>

#include "apps/console/console.h"
#include "database/environment.h"

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

class ProgressLine : public database::Progress {
 public:
  /// With an `interrupt`, Ctrl+C ends the work at its next row; without one the work does not hear of it.
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
  /// Takes the line away, so that something else can be written; the next call shows it again.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool is_due(Clock::time_point now) const;
  void show(double share, std::string_view what, const std::string& how_much, Clock::time_point now);
  std::string time_left(std::int32_t value, Clock::time_point now) const;

  Console& console_;
  const Interrupt* interrupt_;
  Clock::time_point shown_;    ///< the moment from which the next showing is counted
  Clock::duration pause_;      ///< until then: first the delay, then the pause between two showings
  Clock::time_point started_;  ///< of the work that start() announced
  std::size_t width_ = 0;      ///< characters that stand in the line
  std::string caption_;
  std::int32_t maximum_ = 0;
};

/// "0:07", "12:30", "1:02:03"
std::string duration_text(std::chrono::seconds duration);

}  // namespace console
