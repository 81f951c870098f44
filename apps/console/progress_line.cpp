#include "apps/console/progress_line.h"

#include <fmt/core.h>

#include <algorithm>
#include <csignal>

#include "apps/console/text_table.h"
#include "database/version_record.h"
#include "support/encoding.h"

namespace console {
namespace {

constexpr std::size_t bar_width = 30;
/// A line that the terminal wraps cannot be written over.
constexpr std::size_t longest_line = 79;
constexpr std::chrono::milliseconds pause_between{100};

std::string bar(double share) {
  const auto full = static_cast<std::size_t>(std::clamp(share, 0.0, 1.0) * static_cast<double>(bar_width));
  return "[" + std::string(full, '#') + std::string(bar_width - full, '.') + "] ";
}

std::string shortened(const std::string& text, std::size_t longest) {
  const std::u16string units = support::utf16_from_utf8(text);
  return units.size() <= longest ? text : support::utf8_from_utf16(units.substr(0, longest - 1)) + "…";
}

}  // namespace

std::string duration_text(std::chrono::seconds duration) {
  const auto hours = duration.count() / 3600, minutes = duration.count() / 60 % 60, seconds = duration.count() % 60;
  if (hours == 0) return fmt::format("{}:{:02}", minutes, seconds);
  return fmt::format("{}:{:02}:{:02}", hours, minutes, seconds);
}

ProgressLine::ProgressLine(Console& console, const Interrupt* interrupt)
    : console_(console),
      interrupt_(interrupt),
      shown_(Clock::now()),
      pause_(console.progress_delay),
      started_(shown_) {}

bool ProgressLine::is_due(Clock::time_point now) const { return console_.err_is_terminal && now - shown_ >= pause_; }

void ProgressLine::show(double share, std::string_view what, const std::string& how_much, Clock::time_point now) {
  const std::size_t room = longest_line - bar(0).size() - how_much.size();
  const std::string line = bar(share) + shortened(one_line(what), room) + how_much;
  const std::size_t width = support::character_count(line);
  console_.err << '\r' << line << std::string(width_ > width ? width_ - width : 0, ' ') << std::flush;
  width_ = width;
  shown_ = now;
  pause_ = std::min<Clock::duration>(console_.progress_delay, pause_between);
}

void ProgressLine::clear() {
  if (width_ > 0) console_.err << '\r' << std::string(width_, ' ') << '\r' << std::flush;
  width_ = 0;
}

void ProgressLine::start(std::string_view caption, std::int32_t maximum) {
  caption_ = caption;
  maximum_ = maximum;
  started_ = Clock::now();
  set_value(0);
}

void ProgressLine::set_caption(std::string_view caption) { caption_ = caption; }

std::string ProgressLine::time_left(std::int32_t value, Clock::time_point now) const {
  const std::chrono::duration<double> elapsed = now - started_;
  // In the first moments an estimate of the rest is a guess.
  constexpr std::chrono::duration<double> first_moments{0.5};
  if (value <= 0 || value >= maximum_ || elapsed < first_moments) return {};
  const std::chrono::duration<double> left = elapsed * (maximum_ - value) / value;
  return ", " + duration_text(std::chrono::ceil<std::chrono::seconds>(left)) + " left";
}

void ProgressLine::set_value(std::int32_t value) {
  // Asking the clock for every row would cost more than the row.
  if (!console_.err_is_terminal) return;
  const Clock::time_point now = Clock::now();
  if (!is_due(now)) return;
  const std::string count = maximum_ > 0 ? fmt::format(" {}/{}", value, maximum_) : fmt::format(" {}", value);
  const double share = maximum_ > 0 ? static_cast<double>(value) / maximum_ : 0;
  show(share, caption_, count + time_left(value, now), now);
}

void ProgressLine::finish() { maximum_ = 0; }

void ProgressLine::upgrade_step(std::int16_t version, std::string_view table) {
  const Clock::time_point now = Clock::now();
  if (!is_due(now)) return;
  const double share = static_cast<double>(version) / database::current_minor_version;
  show(share, fmt::format("4.{} {}", version, table), "", now);
}

namespace {

volatile std::sig_atomic_t interrupted = 0;

void note(int) {
  interrupted = 1;
  std::signal(SIGINT, SIG_DFL);
}

}  // namespace

Interrupt::Interrupt() {
  interrupted = 0;
  before_ = std::signal(SIGINT, note);
}

Interrupt::~Interrupt() { std::signal(SIGINT, before_ == SIG_ERR ? SIG_DFL : before_); }

bool Interrupt::wanted() noexcept { return interrupted != 0; }

}  // namespace console
