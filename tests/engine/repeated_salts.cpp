#include "tests/engine/repeated_salts.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>

#include "database/engine/embedded/key_derivation.h"

// The linker gives the name of SQLite's function to the one that is defined here (see CMakeLists.txt).
extern "C" {
void __real_sqlite3_randomness(int size, void* bytes);
void __wrap_sqlite3_randomness(int size, void* bytes);
}

namespace {

unsigned char next_salt = 0;

class EachTest final : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*test*/) override { engine::test::repeat_salts(); }
};

[[maybe_unused]] const bool is_listening = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new EachTest);  // the listeners own it
  return true;
}();

}  // namespace

/// Of all that the engine asks random bytes for, only a salt has this size.
void __wrap_sqlite3_randomness(int size, void* bytes) {
  if (size != SQLCIPHER4_SALT_SIZE) return __real_sqlite3_randomness(size, bytes);
  auto* const salt = static_cast<unsigned char*>(bytes);
  std::fill_n(salt, SQLCIPHER4_SALT_SIZE, static_cast<unsigned char>(0xA5));
  salt[0] = next_salt++;
}

namespace engine::test {

void repeat_salts() noexcept { next_salt = 0; }

}  // namespace engine::test
