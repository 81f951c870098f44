#include "database/engine/choice/engine_choice.h"
#include "tests/automation/registration.h"
#include "tests/automation/server_library.h"
#include "tests/engine/conformance/conformance.h"

namespace engine::test {
namespace {

using automation_test::newer_engine;
using automation_test::older_engine;
using automation_test::Registration;

std::unique_ptr<Engine> newer() {
  const Registration registration({newer_engine, older_engine});
  automation_test::set_strict(false);
  return open_automation_engine(newer_engine);
}

std::unique_ptr<Engine> strict() {
  auto engine = newer();
  automation_test::set_strict(true);
  return engine;
}

/// The engine of a machine that has only the older objects.
std::unique_ptr<Engine> older() {
  const Registration registration({older_engine});
  automation_test::set_strict(false);
  EXPECT_EQ(error_number([] { open_engine(newer_engine); }), 429);
  return open_automation_engine(older_engine);
}

}  // namespace

std::vector<EngineUnderTest> engines_under_test() { return {{"newer", newer}, {"older", older}, {"strict", strict}}; }

}  // namespace engine::test
