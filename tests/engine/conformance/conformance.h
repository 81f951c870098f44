// What every engine behind the object model must do, tested with each engine that a program names.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tests/engine/test_database.h"

namespace engine::test {

struct EngineUnderTest {
  std::string name;  ///< letters and digits
  std::unique_ptr<Engine> (*open)();
};
inline void PrintTo(const EngineUnderTest& engine, std::ostream* out) { *out << engine.name; }

/// Each program that runs the suite defines this function.
std::vector<EngineUnderTest> engines_under_test();

class ConformanceTest : public EngineTest, public testing::WithParamInterface<EngineUnderTest> {
 protected:
  ConformanceTest() : EngineTest(GetParam().open()) {}
};

inline std::string name_of_engine(const testing::TestParamInfo<EngineUnderTest>& row) { return row.param.name; }

}  // namespace engine::test
