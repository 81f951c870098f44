#include "tests/engine/conformance/conformance.h"

namespace engine::test {

std::vector<EngineUnderTest> engines_under_test() {
  return {{"embedded", [] { return impatient_engine(); }}};
}

}  // namespace engine::test
