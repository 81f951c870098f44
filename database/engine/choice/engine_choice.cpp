#include "database/engine/choice/engine_choice.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/embedded_engine.h"
#include "support/encoding.h"

namespace engine {
namespace {

class BothEngines : public Engine {
 public:
  BothEngines(std::unique_ptr<Engine> automation, std::unique_ptr<Engine> embedded)
      : automation_(std::move(automation)), embedded_(std::move(embedded)) {}

  std::unique_ptr<Database> create_database(std::string_view path, std::string_view locale,
                                            std::int32_t version) override {
    return automation_->create_database(path, locale, version);
  }

  std::unique_ptr<Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                          std::string_view connect) override {
    try {
      return embedded_->open_database(path, exclusive, read_only, connect);
    } catch (const embedded::JetFileError&) {
      return automation_->open_database(path, exclusive, read_only, connect);
    }
  }

  std::unique_ptr<OpeningsAhead> openings_ahead(std::string_view connect) override {
    return embedded_->openings_ahead(connect);
  }

 private:
  std::unique_ptr<Engine> automation_;
  std::unique_ptr<Engine> embedded_;
};

/// Null where the identifier is not registered.
std::unique_ptr<Engine> find_automation_engine(std::string_view identifier) {
  try {
    return open_automation_engine(identifier);
  } catch (const support::RuntimeError& error) {
    if (error.number() != support::error_number::no_such_engine) throw;
    return nullptr;
  }
}

}  // namespace

std::unique_ptr<Engine> open_embedded_engine(std::string_view identifier) {
  const auto is_same = [identifier](std::string_view known) { return support::equal_ignoring_case(known, identifier); };
  if (std::ranges::none_of(automation_identifiers, is_same)) {
    throw support::RuntimeError(support::error_number::no_such_engine, "There is no engine of this identifier.");
  }
  return embedded::create_embedded_engine();
}

std::unique_ptr<Engine> both_engines(std::unique_ptr<Engine> automation, std::unique_ptr<Engine> embedded) {
  return std::make_unique<BothEngines>(std::move(automation), std::move(embedded));
}

std::unique_ptr<Engine> open_engine(std::string_view identifier) {
  auto embedded = open_embedded_engine(identifier);
  if (auto automation = find_automation_engine(identifier)) {
    return both_engines(std::move(automation), std::move(embedded));
  }
  // The embedded engine answers only where none of the identifiers is registered. Where one of them is, a caller that
  // asks for the other one has to go on to it.
  if (std::ranges::any_of(automation_identifiers,
                          [](std::string_view other) { return find_automation_engine(other) != nullptr; })) {
    throw support::RuntimeError(support::error_number::no_such_engine,
                                std::string(identifier) + " is not installed on this machine.");
  }
  return embedded;
}

}  // namespace engine
