// A test program that links the library of this name gives new databases the same salts in each test: the first file of
// every test has one salt, the second another, and so on. So the process derives the key of each salt and password
// once, not once a test. Deriving it takes longer than most tests.
#pragma once

namespace engine::test {

/// The next database gets the first salt again, as at the beginning of a test.
void repeat_salts() noexcept;

}  // namespace engine::test
