// Where the key of an open file is in this process's memory, and that it is gone when no file is open any more.
#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <span>
#include <sstream>
#include <thread>

#include "database/engine/embedded/file_keys.h"
#include "tests/engine/quick_keys.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

constexpr std::string_view password = "geheim";
constexpr unsigned char mask = 0x5A;

/// The second half of a file's key (the allocator overwrites the beginning of freed memory), and its text in
/// hexadecimal digits. Both are masked, so that a search of the memory does not find this object.
struct MaskedKey {
  explicit MaskedKey(const std::string& file) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    embedded::FileSalt salt;
    std::copy_n(file.begin(), salt.size(), salt.begin());
    const embedded::FileKey key(password, salt);
    for (const unsigned char byte : std::span(key.key()).subspan(SQLCIPHER4_KEY_SIZE / 2)) {
      bytes += static_cast<char>(byte ^ mask);
      for (const char digit : {hexadecimal[byte >> 4U], hexadecimal[byte & 15U]})
        digits += static_cast<char>(digit ^ mask);
    }
  }
  std::string bytes, digits;
};

/// How often the key is in a piece of memory, which may or may not hold objects of ours. The search makes no copy of
/// the memory, because it would be found, too.
__attribute__((no_sanitize("address", "undefined"))) std::size_t count_in(const char* begin, const char* end,
                                                                          const std::string& masked) {
  const char* const sought = masked.data();
  const std::size_t size = masked.size();
  std::size_t count = 0;
  for (; static_cast<std::size_t>(end - begin) >= size; ++begin) {
    std::size_t same = 0;
    while (same < size &&
           (static_cast<unsigned char>(begin[same]) ^ mask) == static_cast<unsigned char>(sought[same])) {
      ++same;
    }
    if (same == size) ++count;
  }
  return count;
}

/// How often the key is in the memory that this process can write, except the stack.
std::size_t copies_in_memory(const std::string& masked) {
  // Larger areas are only the sanitizers' own, and that of database pages. The heap has been seen at 60 MiB.
  constexpr std::size_t largest = 250U << 20U;
  std::ifstream map("/proc/self/maps");
  std::size_t copies = 0;
  for (std::string line; std::getline(map, line);) {
    std::uintptr_t begin = 0, end = 0;
    char dash = 0;
    std::string rights;
    std::istringstream(line) >> std::hex >> begin >> dash >> end >> rights;
    if (!rights.starts_with("rw") || end - begin > largest || line.find("[stack]") != std::string::npos) continue;
    copies += count_in(reinterpret_cast<const char*>(begin), reinterpret_cast<const char*>(end), masked);
  }
  return copies;
}

class SecretMemory : public EngineTest {};

/// The stack of a thread is kept for the next one. The search would not look at this thread's own.
TEST_F(SecretMemory, OfTheStackOfADerivationHoldsNoKey) {
  const embedded::FileSalt salt{1, 2, 3};
  std::thread([&] { const embedded::FileKey key(password, salt); }).join();
  const MaskedKey key({salt.begin(), salt.end()});
  EXPECT_EQ(copies_in_memory(key.bytes), 0U);
}

TEST_F(SecretMemory, HoldsTheKeyOnlyAsLongAsItIsOfUse) {
  derive_all_keys();
  add_things(*create("test.das", password));
  const MaskedKey key(content());
  std::size_t while_open = 0;
  {
    const auto database = open("test.das", password);
    column(*database, "things", "name");
    while_open = copies_in_memory(key.bytes);
  }
  const std::size_t closed = copies_in_memory(key.bytes);
  EXPECT_GT(while_open, closed) << "the search finds what is there";
  EXPECT_EQ(closed, 1U) << "the one that saves the next opening from deriving it again";
  EXPECT_EQ(copies_in_memory(key.digits), 0U);
}

TEST_F(SecretMemory, IsKeptFromTheDiskByTheSettingsOfTheBuild) {
  for (const char* setting : {"TEMP_STORE=3", "SECURE_DELETE"})
    EXPECT_TRUE(sqlite3_compileoption_used(setting)) << setting;
  const auto database = create();
  add_things(*database);
  database->begin_transaction();
  for (int i = 0; i < 200; ++i) database->execute("INSERT INTO things (note) VALUES ('" + std::string(500, 'q') + "')");
  database->commit_transaction();
  database->execute("DELETE FROM things");
  database->close();
  EXPECT_EQ(content().find("qqqq"), std::string::npos) << "what was deleted is overwritten";
}

}  // namespace
}  // namespace engine::test
