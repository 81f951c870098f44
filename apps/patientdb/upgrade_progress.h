// The progress of an upgrade as one line of a terminal that is written over: a bar, the layout that is being reached,
// the table, and while pump data are converted the day.
#pragma once

#include <chrono>
#include <ostream>
#include <string>

#include "database/environment.h"

namespace patientdb {

class UpgradeProgress : public database::Progress {
 public:
  /// Shows nothing where `visible` is false.
  UpgradeProgress(std::ostream& out, bool visible) : out_(out), visible_(visible) {}
  ~UpgradeProgress() override { clear(); }
  UpgradeProgress(const UpgradeProgress&) = delete;
  UpgradeProgress& operator=(const UpgradeProgress&) = delete;

  void start(std::string_view caption, std::int32_t maximum) override;
  void set_caption(std::string_view caption) override;
  void set_value(std::int32_t value) override;
  void finish() override;
  void upgrade_step(std::int16_t version, std::string_view table) override;
  /// Takes the line away, so that something else can be written.
  void clear();

 private:
  void show(double share, const std::string& text);

  std::ostream& out_;
  bool visible_;
  std::size_t width_ = 0;  ///< characters that stand in the line
  std::string caption_;
  std::int32_t maximum_ = 0;
  std::chrono::steady_clock::time_point shown_;
};

}  // namespace patientdb
