// Keys that other threads derive ahead are the same as those derived at the opening, and are wiped when they have been
// passed.
#include "database/engine/embedded/keys_ahead.h"

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

using embedded::FileKey;
using embedded::FileSalt;
using embedded::KeyBytes;
using embedded::KeysAhead;

FileSalt salt(unsigned char number) {
  FileSalt bytes{};
  bytes.fill(number);
  return bytes;
}

KeyBytes derived(std::string_view password, const FileSalt& of) {
  KeyBytes key{};
  sqlcipher4_derive_key(reinterpret_cast<const unsigned char*>(password.data()), password.size(), of.data(),
                        key.data());
  return key;
}

/// The expected bytes are Python's hashlib.pbkdf2_hmac("sha512", …, 256000, 32).
TEST(KeyDerivation, GivesTheKeyThatOtherProgramsDerive) {
  constexpr KeyBytes expected{0x2f, 0x1a, 0x14, 0xbc, 0x92, 0x43, 0xf2, 0x8f, 0xa8, 0x4a, 0x6b,
                              0xbc, 0xe2, 0x54, 0xd8, 0xc4, 0xc6, 0x9d, 0xf6, 0xb6, 0x4a, 0x9c,
                              0x9b, 0xee, 0xd3, 0xc5, 0x1e, 0x22, 0x27, 0x90, 0x42, 0xa8};
  EXPECT_EQ(derived("geheim", salt(7)), expected);
}

TEST(KeysAheadTest, AreThoseThatTheDerivationGives) {
  KeysAhead ahead{"geheim"};
  for (unsigned char number = 0; number < 4; ++number) ahead.expect(salt(number));
  for (unsigned char number = 0; number < 4; ++number) {
    const FileKey key{"geheim", salt(number)};
    EXPECT_EQ(key.key(), derived("geheim", salt(number))) << int{number};
    key.remember("geheim");
    ahead.pass(salt(number));
    EXPECT_FALSE(embedded::is_key_known("geheim", salt(number)));
  }
}

TEST(KeysAheadTest, AreSharedByFilesOfOneSaltUntilTheLastOfThem) {
  KeysAhead ahead{"geheim"};
  for (int file = 0; file < 2; ++file) ahead.expect(salt(1));
  KeyBytes key{};
  EXPECT_TRUE(KeysAhead::find("geheim", salt(1), key));
  ahead.pass(salt(1));
  EXPECT_TRUE(KeysAhead::find("geheim", salt(1), key));
  EXPECT_FALSE(KeysAhead::find("Geheim", salt(1), key)) << "the key of another password";
  EXPECT_FALSE(KeysAhead::find("geheim", salt(2), key)) << "a file that nobody expects";
  ahead.pass(salt(1));
  EXPECT_FALSE(KeysAhead::find("geheim", salt(1), key));
}

TEST(KeysAheadTest, EndWhileTheyAreDerivedAndWhenTheyAreNeverAskedFor) {
  KeysAhead ahead{"geheim"};
  for (unsigned char number = 10; number < 20; ++number) ahead.expect(salt(number));
  ahead.pass(salt(10));
  ahead.pass(salt(10));
}

class OpeningsAheadTest : public EngineTest {};

TEST_F(OpeningsAheadTest, OpenFilesOfEveryKindAndAreBounded) {
  for (const char* name : {"a.das", "b.das"}) add_things(*create(name, "geheim"));
  add_things(*create("plain.das"));
  write("damaged.das", "no database");
  embedded::forget_known_keys();
  const auto openings = engine().openings_ahead("MS Access;pwd=geheim");
  int announced = 0;
  for (const char* name : {"a.das", "damaged.das", "plain.das", "none.das"}) {
    if (openings->has_room()) openings->announce(path(name)), ++announced;
  }
  EXPECT_EQ(open("a.das", "geheim")->table_defs().count(), 1);
  EXPECT_EQ(error_number([&] { open("a.das", "falsch"); }), 3031);
  for (; openings->has_room(); ++announced) openings->announce(path("b.das"));
  EXPECT_EQ(static_cast<std::size_t>(announced), KeysAhead::most_expected());
  for (int passed = 0; passed <= announced; ++passed) openings->pass();
  EXPECT_TRUE(openings->has_room());
  EXPECT_EQ(open("b.das", "geheim")->table_defs().count(), 1);
}

}  // namespace
}  // namespace engine::test
