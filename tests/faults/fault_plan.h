// Says which fault happens at which of the operations that change or read files. Each process has one plan; the file
// system shim and the faulty ports ask it before each operation.
#pragma once

#include <array>
#include <functional>
#include <string_view>

namespace faults {

enum class Fault {
  None,          ///< operations are only counted
  DiskError,     ///< one operation of any kind fails
  ShortWrite,    ///< one write stores its first half and fails
  FullDisk,      ///< from one write on, every write fails
  Killed,        ///< the process dies; what it wrote stays
  PowerCut,      ///< the process dies, and everything that was not synced is lost
  TornPowerCut,  ///< the same, but some sectors of what was not synced have reached the disk
};
std::string_view name_of(Fault fault);

enum class Operation { Read, Write, Other };
inline constexpr std::array operations{Operation::Read, Operation::Write, Operation::Other};

enum class Verdict { Proceed, Fail, Shorten, Full };

/// The exit code of a process that a plan has ended.
inline constexpr int died = 99;

class FaultPlan {
 public:
  /// The plan of this process.
  static FaultPlan& current();

  /// Restarts the count. The fault happens at the operation `at`, counted from 1.
  void arm(Fault fault, int at);
  /// Ends the faults. The count stays.
  void disarm() noexcept { fault_ = Fault::None; }
  /// At how many operations since `arm` this fault could have happened.
  int points(Fault fault) const;
  Fault fault() const noexcept { return fault_; }
  int at() const noexcept { return at_; }

  /// Says what shall happen to the next operation. Does not return if the process ends here.
  Verdict meet(Operation operation);
  /// Changes the disk to what a power cut leaves.
  std::function<void()> lose_unsynced;

 private:
  Fault fault_ = Fault::None;
  int at_ = 0;
  std::array<int, 3> count_{};  ///< of each operation
};

/// True if the next operation shall fail.
inline bool fails(Operation operation) { return FaultPlan::current().meet(operation) != Verdict::Proceed; }

}  // namespace faults
