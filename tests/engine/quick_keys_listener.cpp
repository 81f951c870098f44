#include <gtest/gtest.h>

#include "tests/engine/quick_keys.h"

namespace {

class EachTest final : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*test*/) override { engine::test::begin_test(); }
};

[[maybe_unused]] const bool is_listening = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new EachTest);  // the listeners own it
  return true;
}();

}  // namespace
