// Long work as it is told to whoever shows it, and the user's wish to end it.
#pragma once

#include <cstdint>
#include <string_view>

namespace database {

/// All calls may be made any number of times; none raises.
class Progress {
 public:
  virtual ~Progress() = default;
  /// `maximum` is the value at the end of the work, in units of the caller's; 0 where nobody knows that.
  virtual void start(std::string_view caption, std::int32_t maximum) = 0;
  virtual void set_caption(std::string_view caption) = 0;
  virtual void set_value(std::int32_t value) = 0;
  virtual void finish() = 0;
  /// The work goes on: whoever shows it may let its window answer. Work that takes long calls this often.
  virtual void at_work() {}
  /// Work that can be ended between two of its parts offers that, between start() and finish(), under this caption.
  virtual void offer_cancel(std::string_view caption) { static_cast<void>(caption); }
  /// True once the user has taken that offer.
  virtual bool cancelled() const { return false; }
  /// True once the user wants the work to end at its next row, with nothing of it kept.
  virtual bool interrupted() const { return false; }
  /// An upgrade works towards a minor version on a table; the table is empty where it works on none.
  virtual void upgrade_step(std::int16_t version, std::string_view table) {
    static_cast<void>(version);
    static_cast<void>(table);
  }
};

/// A number of rows as a value of it; the largest there is for a larger number.
std::int32_t progress_value(std::int64_t rows);

/// Raises 3059 (cancelled by the user) where `progress` is interrupted. Null: nobody can interrupt.
void end_if_interrupted(const Progress* progress);

}  // namespace database
