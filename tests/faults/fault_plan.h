// Which fault happens at which of the operations that change or read files. One plan per process: the file system shim
// and the faulty ports ask it before each operation.
#pragma once

#include <functional>
#include <string_view>

namespace faults {

enum class Fault {
  None,          ///< operations are counted only
  DiskError,     ///< one operation, of whatever kind, fails
  ShortWrite,    ///< one write stores its first half and fails
  FullDisk,      ///< from one write on, every write fails
  Killed,        ///< the process is gone; what it wrote stays
  PowerCut,      ///< the process is gone, and with it all that was not synced
  TornPowerCut,  ///< the same, but some sectors of what was not synced have reached the disk
};
std::string_view name_of(Fault fault);

enum class Operation { Read, Write, Other };

enum class Verdict { Proceed, Fail, Shorten, Full };

/// The exit code of a process that a plan has ended.
inline constexpr int died = 99;

class FaultPlan {
 public:
  /// The plan of this process.
  static FaultPlan& current();

  /// Counts anew; the fault happens at the operation `at`, from 1.
  void arm(Fault fault, int at);
  /// No fault any more; the operations that the fault could have happened at.
  int disarm();
  Fault fault() const noexcept { return fault_; }
  int at() const noexcept { return at_; }

  /// What is to become of an operation that is about to happen. Does not return where the process ends with it.
  Verdict meet(Operation operation);
  /// Leaves on the disk what a power cut leaves.
  std::function<void()> lose_unsynced;

 private:
  bool counts(Operation operation) const;

  Fault fault_ = Fault::None;
  int at_ = 0;
  int count_ = 0;
};

/// Whether the operation that is about to happen fails.
inline bool fails(Operation operation) { return FaultPlan::current().meet(operation) != Verdict::Proceed; }

}  // namespace faults
