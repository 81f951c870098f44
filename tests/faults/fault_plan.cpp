#include "tests/faults/fault_plan.h"

#include <unistd.h>

#include <array>
#include <cstddef>

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

namespace {

/// Whether the fault can happen at such an operation.
bool meets(Fault fault, Operation operation) {
  switch (fault) {
    case Fault::DiskError:
      return true;
    case Fault::ShortWrite:
    case Fault::FullDisk:
      return operation == Operation::Write;
    default:
      return operation != Operation::Read;
  }
}

}  // namespace

void FaultPlan::arm(Fault fault, int at) {
  fault_ = fault;
  at_ = at;
  count_ = {};
}

int FaultPlan::points(Fault fault) const {
  int sum = 0;
  for (const Operation operation : operations)
    if (meets(fault, operation)) sum += count_.at(static_cast<std::size_t>(operation));
  return sum;
}

Verdict FaultPlan::meet(Operation operation) {
  ++count_.at(static_cast<std::size_t>(operation));
  if (at_ == 0 || !meets(fault_, operation)) return Verdict::Proceed;
  const int count = points(fault_);
  if (count < at_) return Verdict::Proceed;
  switch (fault_) {
    case Fault::DiskError:
      return count == at_ ? Verdict::Fail : Verdict::Proceed;
    case Fault::ShortWrite:
      return count == at_ ? Verdict::Shorten : Verdict::Proceed;
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
