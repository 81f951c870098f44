// The error convention of the whole program: failing steps raise RuntimeError, a procedure passes over
// them one by one and records which procedure was entered last. Nothing here is shown to the user.
//
// "Raises 75" in a header means: throws RuntimeError with this number.
#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/error_number.h"

namespace support {

/// A failed step: the database engine's own number where it has one (3021 no current record), else the
/// language runtime's (13 type mismatch).
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
  int number() const noexcept { return number_; }

 private:
  int number_;
};

/// Which steps a piece of work has passed over.
class Outcome {
 public:
  /// The first error that `wanted` holds for. Of errors with one number, only the first is asked about.
  std::optional<RuntimeError> first(const std::function<bool(const RuntimeError&)>& wanted) const;
  /// Raises that error, where there is one.
  void raise_first(const std::function<bool(const RuntimeError&)>& wanted) const;
  /// The last error, which is the one that ended the work where it has ended early.
  const std::optional<RuntimeError>& last() const noexcept { return last_; }

  void add(const RuntimeError& error);
  /// What comes later: as if this work had gone on with that one.
  void add(const Outcome& later);

 private:
  std::vector<RuntimeError> first_of_number_;  ///< in the order of their coming
  std::optional<RuntimeError> last_;
};

/// Runs `work` and returns what the procedures in it have passed over. Calls may be nested: the outer one's outcome
/// holds that of the inner one. Raises what `work` raises.
Outcome outcome_of(const std::function<void()>& work);

/// Label of the procedure entered last, module label + "!" + procedure name; empty before the first.
const std::string& current_procedure_label() noexcept;

/// Told of every step that was passed over, for a journal or a console; work asks for the outcome_of() its parts
/// instead. Must not raise.
using SkippedStepListener = std::function<void(std::string_view label, const RuntimeError& error)>;

/// Replaces the listener (none by default) and returns the one before.
SkippedStepListener set_skipped_step_listener(SkippedStepListener listener);

/// A listener for as long as this lives, beside the one from before. Of several the youngest must go first.
class SkippedStepWatch {
 public:
  explicit SkippedStepWatch(SkippedStepListener told);
  ~SkippedStepWatch();
  SkippedStepWatch(const SkippedStepWatch&) = delete;
  SkippedStepWatch& operator=(const SkippedStepWatch&) = delete;

 private:
  SkippedStepListener told_, before_;
};

/// One procedure's run. Its construction records the label, which stays recorded after the return.
///
/// Resume-next mode: whatever may fail is a step() of its own; a failing one is passed over and its
/// error stays pending until clear(), and counts in the outcome_of() the work. Handler mode: the whole body is one
/// guarded() call, ended by its first error.
class Procedure {
 public:
  explicit Procedure(std::string_view label);
  Procedure(const Procedure&) = delete;
  Procedure& operator=(const Procedure&) = delete;

  /// Runs one step. False when it failed; the error is pending then and the listener has been told.
  /// Any exception but a RuntimeError becomes error 51 (internal error), std::bad_alloc 7 (out of memory).
  template <typename Work>
  bool step(Work&& work) noexcept {
    try {
      std::forward<Work>(work)();
      return true;
    } catch (...) {
      record_current_exception();
      return false;
    }
  }

  /// Handler mode: the body ends at its first error. The same as step(); the name says what is meant.
  template <typename Body>
  bool guarded(Body&& body) noexcept {
    return step(std::forward<Body>(body));
  }

  /// True while an error of this procedure is pending: the latest one.
  bool pending() const noexcept { return error_.has_value(); }
  /// The pending error. Precondition: pending().
  const RuntimeError& error() const noexcept { return *error_; }
  void clear() noexcept { error_.reset(); }

 private:
  void record_current_exception() noexcept;

  std::string label_;
  std::optional<RuntimeError> error_;
};

}  // namespace support
