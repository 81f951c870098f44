// What every registry must do for the functions in registry.h: the hive everywhere and, on Windows, the machine's
// registry.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "support/registry.h"
#include "tests/support/temporary_folder.h"

namespace support::testing {

struct RegistryCase {
  std::string name;
  std::function<std::unique_ptr<Registry>(const TemporaryFolder&)> open;
  /// A key below which the test may write.
  std::string scratch_key;
  /// Removes what the test has written.
  std::function<void(const std::string& scratch_key)> clean;
};

class RegistryContract : public ::testing::TestWithParam<RegistryCase> {
 protected:
  RegistryContract() : registry_(GetParam().open(folder_)), key_(GetParam().scratch_key) {}
  ~RegistryContract() override { GetParam().clean(key_); }

  TemporaryFolder folder_;
  std::unique_ptr<Registry> registry_;
  std::string key_;
};

}  // namespace support::testing
