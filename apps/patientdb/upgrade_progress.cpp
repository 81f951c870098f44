#include "apps/patientdb/upgrade_progress.h"

#include <algorithm>

#include "database/version_record.h"
#include "support/encoding.h"

namespace patientdb {
namespace {

constexpr std::size_t bar_width = 30;
constexpr std::chrono::milliseconds shortest_pause{100};

std::string bar(double share) {
  const auto full = static_cast<std::size_t>(std::clamp(share, 0.0, 1.0) * static_cast<double>(bar_width));
  return "[" + std::string(full, '#') + std::string(bar_width - full, '.') + "] ";
}

}  // namespace

void UpgradeProgress::show(double share, const std::string& text) {
  if (!visible_) return;
  const std::string line = bar(share) + text;
  const std::size_t width = support::character_count(line);
  out_ << '\r' << line << std::string(width_ > width ? width_ - width : 0, ' ') << std::flush;
  width_ = width;
  shown_ = std::chrono::steady_clock::now();
}

void UpgradeProgress::clear() {
  if (width_ > 0) out_ << '\r' << std::string(width_, ' ') << '\r' << std::flush;
  width_ = 0;
}

void UpgradeProgress::start(std::string_view caption, std::int32_t maximum) {
  caption_ = caption;
  maximum_ = maximum;
  set_value(0);
}

void UpgradeProgress::set_caption(std::string_view caption) { caption_ = caption; }

void UpgradeProgress::set_value(std::int32_t value) {
  // Days come faster than anybody reads.
  const bool last = value == 0 || value == maximum_;
  if (!last && std::chrono::steady_clock::now() - shown_ < shortest_pause) return;
  const double share = maximum_ > 0 ? static_cast<double>(value) / maximum_ : 1;
  show(share, caption_ + " " + std::to_string(value) + "/" + std::to_string(maximum_));
}

void UpgradeProgress::finish() { maximum_ = 0; }

void UpgradeProgress::upgrade_step(std::int16_t version, std::string_view table) {
  const double share = static_cast<double>(version) / database::current_minor_version;
  show(share, "4." + std::to_string(version) + " " + std::string(table));
}

}  // namespace patientdb
