#include "support/error.h"

#include <new>

namespace support {

namespace {

constexpr int out_of_memory = 7;
constexpr int internal_error = 51;

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
    return {out_of_memory, "Out of memory"};
  } catch (const std::exception& exception) {
    return {internal_error, exception.what()};
  } catch (...) {
    return {internal_error, "Internal error"};
  }
}

}  // namespace

const std::string& current_procedure_label() noexcept { return label_entered_last(); }

SkippedStatementListener set_skipped_statement_listener(SkippedStatementListener new_listener) {
  return std::exchange(listener(), std::move(new_listener));
}

Procedure::Procedure(std::string_view label) : label_(label) { label_entered_last() = label_; }

void Procedure::record_current_exception() noexcept {
  error_ = runtime_error_of_current_exception();
  if (listener()) listener()(label_, *error_);
}

}  // namespace support
