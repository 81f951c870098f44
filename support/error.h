// The error convention of the whole program. A step that fails raises RuntimeError. A procedure passes over its failed
// steps one by one, and the name of the procedure that was entered last is recorded. Nothing here is shown to the user.
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

/// The error of a failed step. Its number is the database engine's own if the engine has one (3021 no current record),
/// else the language runtime's (13 type mismatch).
class RuntimeError : public std::runtime_error {
 public:
  RuntimeError(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
  int number() const noexcept { return number_; }

 private:
  int number_;
};

/// The errors of the steps that a piece of work has passed over.
class Outcome {
 public:
  /// The first error for which `wanted` is true. Of several errors with one number, `wanted` is asked about the first
  /// only.
  std::optional<RuntimeError> first(const std::function<bool(const RuntimeError&)>& wanted) const;
  /// Raises that error, if there is one.
  void raise_first(const std::function<bool(const RuntimeError&)>& wanted) const;
  /// The last error. If the work ended early, this error ended it.
  const std::optional<RuntimeError>& last() const noexcept { return last_; }

  void add(const RuntimeError& error);
  /// Appends the errors of work that was done later.
  void add(const Outcome& later);

 private:
  std::vector<RuntimeError> first_of_number_;  ///< in the order in which they came
  std::optional<RuntimeError> last_;
};

/// Runs `work` and returns the errors of the steps that the procedures in it passed over. Calls may be nested: the
/// outer outcome includes the inner one. Raises what `work` raises.
Outcome outcome_of(const std::function<void()>& work);

/// Label of the procedure that was entered last: module label, "!", procedure name. Empty before the first one.
const std::string& current_procedure_label() noexcept;

/// Is called for every step that was passed over. It serves a journal or a console; code that needs to know which of
/// its steps failed calls outcome_of() instead. Must not raise.
using SkippedStepListener = std::function<void(std::string_view label, const RuntimeError& error)>;

/// Replaces the listener (none by default) and returns the one before.
SkippedStepListener set_skipped_step_listener(SkippedStepListener listener);

/// Adds a listener for as long as this object lives; the previous listener is still called. The object that was made
/// last must be destroyed first.
class SkippedStepWatch {
 public:
  explicit SkippedStepWatch(SkippedStepListener told);
  ~SkippedStepWatch();
  SkippedStepWatch(const SkippedStepWatch&) = delete;
  SkippedStepWatch& operator=(const SkippedStepWatch&) = delete;

 private:
  SkippedStepListener told_, before_;
};

/// One run of a procedure. The constructor records the label, which stays recorded after the return.
///
/// Resume-next mode: each action that may fail is a step() of its own. A failed step is passed over; its error stays
/// pending until clear(), and the surrounding outcome_of() includes it. Handler mode: the whole body is one guarded()
/// call, which its first error ends.
class Procedure {
 public:
  explicit Procedure(std::string_view label);
  Procedure(const Procedure&) = delete;
  Procedure& operator=(const Procedure&) = delete;

  /// Runs one step. Returns false when it failed; then the error is pending and the listener has been called. An
  /// exception other than RuntimeError becomes error 51 (internal error), std::bad_alloc becomes error 7 (out of
  /// memory).
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

  /// Handler mode: the body ends at its first error. This does what step() does; its name tells the reader which mode
  /// is meant.
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
