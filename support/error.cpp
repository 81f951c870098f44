#include "support/error.h"

#include <new>

namespace support {

namespace {

std::string& label_entered_last() {
  static std::string label;
  return label;
}

SkippedStatementListener& listener() {
  static SkippedStatementListener told;
  return told;
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

const std::string& current_procedure_label() noexcept { return label_entered_last(); }

SkippedStatementListener set_skipped_statement_listener(SkippedStatementListener new_listener) {
  return std::exchange(listener(), std::move(new_listener));
}

SkippedStatementWatch::SkippedStatementWatch(SkippedStatementListener told)
    : told_(std::move(told)),
      before_(set_skipped_statement_listener([this](std::string_view label, const RuntimeError& error) {
        told_(label, error);
        if (before_) before_(label, error);
      })) {}

SkippedStatementWatch::~SkippedStatementWatch() { set_skipped_statement_listener(std::move(before_)); }

Procedure::Procedure(std::string_view label) : label_(label) { label_entered_last() = label_; }

void Procedure::record_current_exception() noexcept {
  error_ = runtime_error_of_current_exception();
  if (listener()) listener()(label_, *error_);
}

}  // namespace support
