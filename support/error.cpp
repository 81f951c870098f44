#include "support/error.h"

#include <algorithm>
#include <new>

namespace support {

namespace {

std::string& label_entered_last() {
  static std::string label;
  return label;
}

SkippedStepListener& listener() {
  static SkippedStepListener told;
  return told;
}

/// The outcome of the innermost outcome_of() that is running; null outside of one.
Outcome*& gathered() {
  static Outcome* outcome = nullptr;
  return outcome;
}

RuntimeError runtime_error_of_current_exception() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {error_number::out_of_memory, "Out of memory"};
  } catch (const std::exception& exception) {
    return {error_number::internal_error, exception.what()};
  } catch (...) {
    return {error_number::internal_error, "Internal error"};
  }
}

}  // namespace

std::optional<RuntimeError> Outcome::first(const std::function<bool(const RuntimeError&)>& wanted) const {
  const auto found = std::ranges::find_if(first_of_number_, wanted);
  return found == first_of_number_.end() ? std::nullopt : std::optional(*found);
}

void Outcome::raise_first(const std::function<bool(const RuntimeError&)>& wanted) const {
  if (const auto error = first(wanted)) throw *error;
}

void Outcome::add(const RuntimeError& error) {
  const auto known = std::ranges::find(first_of_number_, error.number(), &RuntimeError::number);
  if (known == first_of_number_.end()) first_of_number_.push_back(error);
  last_ = error;
}

void Outcome::add(const Outcome& later) {
  for (const RuntimeError& error : later.first_of_number_) add(error);
  if (later.last_) last_ = later.last_;
}

Outcome outcome_of(const std::function<void()>& work) {
  Outcome outcome;
  struct Gathering {
    Outcome& inner;
    Outcome* outer = std::exchange(gathered(), &inner);
    ~Gathering() {
      gathered() = outer;
      if (outer) outer->add(inner);
    }
  } gathering{outcome};
  work();
  return outcome;
}

const std::string& current_procedure_label() noexcept { return label_entered_last(); }

SkippedStepListener set_skipped_step_listener(SkippedStepListener new_listener) {
  return std::exchange(listener(), std::move(new_listener));
}

SkippedStepWatch::SkippedStepWatch(SkippedStepListener told)
    : told_(std::move(told)),
      before_(set_skipped_step_listener([this](std::string_view label, const RuntimeError& error) {
        told_(label, error);
        if (before_) before_(label, error);
      })) {}

SkippedStepWatch::~SkippedStepWatch() { set_skipped_step_listener(std::move(before_)); }

Procedure::Procedure(std::string_view label) : label_(label) { label_entered_last() = label_; }

void Procedure::record_current_exception() noexcept {
  error_ = runtime_error_of_current_exception();
  if (gathered()) gathered()->add(*error_);
  if (listener()) listener()(label_, *error_);
}

}  // namespace support
