#include "tests/faults/fault_plan.h"

#include <unistd.h>

#include <array>
#include <cstddef>
#include <utility>

namespace faults {

std::string_view name_of(Fault fault) {
  constexpr std::array<std::string_view, 7> names{"none",   "disk error", "short write",   "full disk",
                                                  "killed", "power cut",  "torn power cut"};
  return names.at(static_cast<std::size_t>(fault));
}

FaultPlan& FaultPlan::current() {
  static FaultPlan plan;
  return plan;
}

void FaultPlan::arm(Fault fault, int at) {
  fault_ = fault;
  at_ = at;
  count_ = 0;
}

int FaultPlan::disarm() {
  fault_ = Fault::None;
  return std::exchange(count_, 0);
}

bool FaultPlan::counts(Operation operation) const {
  switch (fault_) {
    case Fault::DiskError:
      return true;
    case Fault::ShortWrite:
    case Fault::FullDisk:
      return operation == Operation::Write;
    default:
      return operation != Operation::Read;
  }
}

Verdict FaultPlan::meet(Operation operation) {
  if (!counts(operation) || ++count_ < at_ || at_ == 0) return Verdict::Proceed;
  switch (fault_) {
    case Fault::DiskError:
      return count_ == at_ ? Verdict::Fail : Verdict::Proceed;
    case Fault::ShortWrite:
      return count_ == at_ ? Verdict::Shorten : Verdict::Proceed;
    case Fault::FullDisk:
      return Verdict::Full;
    case Fault::PowerCut:
    case Fault::TornPowerCut:
      lose_unsynced();
      [[fallthrough]];
    case Fault::Killed:
      _exit(died);
    case Fault::None:
      break;
  }
  return Verdict::Proceed;
}

}  // namespace faults
