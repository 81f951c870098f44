// A test program that links the library "quick_keys" derives few keys; so does a library that links "known_keys".
// Deriving one takes longer than most tests.
//
// New databases get the same salts in each test: the first file of every test has one salt, the second another, and so
// on. The key of such a salt and a password is derived once for all test programs of all builds, which keep it in a
// file of the build folder.
#pragma once

namespace engine::test {

/// The next database gets the first salt again, as at the beginning of a test.
void repeat_salts() noexcept;

/// Until the end of the test, every key is derived: for tests of the derivation itself.
void derive_all_keys() noexcept;

/// Repeats the salts and takes known keys again. A test program's listener calls this at the beginning of each test.
void begin_test() noexcept;

}  // namespace engine::test
