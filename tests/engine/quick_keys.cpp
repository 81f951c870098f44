#include "tests/engine/quick_keys.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "database/engine/embedded/key_derivation.h"

// The linker gives the names of these functions to those that are defined here (see CMakeLists.txt).
extern "C" {
void __real_sqlite3_randomness(int size, void* bytes);
void __wrap_sqlite3_randomness(int size, void* bytes);
void __real_sqlcipher4_derive_key(const unsigned char* password, size_t password_size, const unsigned char* salt,
                                  unsigned char* key);
void __wrap_sqlcipher4_derive_key(const unsigned char* password, size_t password_size, const unsigned char* salt,
                                  unsigned char* key);
}

namespace {

using Bytes = std::span<const unsigned char>;

constexpr unsigned char filler = 0xA5;
unsigned char next_salt = 0;
/// Threads derive keys, too.
std::atomic<bool> derives_all = false;

/// A salt that every run of the tests gives again.
bool is_repeated(Bytes salt) {
  return std::ranges::all_of(salt.subspan(1), [](unsigned char byte) { return byte == filler; });
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open_known_keys(const char* mode) { return {std::fopen(KNOWN_KEYS, mode), std::fclose}; }

/// The line of a salt and password, without the key at its end. Digits keep the bytes of the key out of this
/// process's memory.
std::string line_of(Bytes password, Bytes salt) {
  std::string line;
  for (const Bytes bytes : {salt, password}) {
    for (const unsigned char byte : bytes) {
      for (const int half : {byte >> 4, byte & 15}) line += static_cast<char>('a' + half);
    }
    line += ' ';
  }
  return line;
}

bool find_key(const std::string& line, std::span<unsigned char, SQLCIPHER4_KEY_SIZE> key) {
  const File file = open_known_keys("rb");
  if (!file) return false;
  std::array<char, 512> buffer{};
  while (std::fgets(buffer.data(), buffer.size(), file.get())) {
    std::string_view digits = buffer.data();
    // A line that another process has not written to its end is none.
    if (!digits.starts_with(line) || digits.size() != line.size() + 2 * key.size() + 1 || digits.back() != '\n')
      continue;
    digits.remove_prefix(line.size());
    for (std::size_t i = 0; i < key.size(); ++i)
      key[i] = static_cast<unsigned char>(((digits[2 * i] - 'a') << 4) + (digits[2 * i + 1] - 'a'));
    return true;
  }
  return false;
}

void keep_key(std::string line, Bytes key) {
  // Each line begins after a line end of its own, whatever an interrupted process has left.
  line.insert(0, 1, '\n');
  for (const unsigned char byte : key) {
    for (const int half : {byte >> 4, byte & 15}) line += static_cast<char>('a' + half);
  }
  line += '\n';
  if (const File file = open_known_keys("ab")) std::fwrite(line.data(), 1, line.size(), file.get());
}

}  // namespace

/// Of all that the engine asks random bytes for, only a salt has this size.
void __wrap_sqlite3_randomness(int size, void* bytes) {
  if (size != SQLCIPHER4_SALT_SIZE) return __real_sqlite3_randomness(size, bytes);
  auto* const salt = static_cast<unsigned char*>(bytes);
  std::fill_n(salt, SQLCIPHER4_SALT_SIZE, filler);
  salt[0] = next_salt++;
}

void __wrap_sqlcipher4_derive_key(const unsigned char* password, size_t password_size, const unsigned char* salt,
                                  unsigned char* key) {
  if (derives_all || !is_repeated({salt, SQLCIPHER4_SALT_SIZE}))
    return __real_sqlcipher4_derive_key(password, password_size, salt, key);
  const std::string line = line_of({password, password_size}, {salt, SQLCIPHER4_SALT_SIZE});
  if (find_key(line, std::span<unsigned char, SQLCIPHER4_KEY_SIZE>{key, SQLCIPHER4_KEY_SIZE})) return;
  __real_sqlcipher4_derive_key(password, password_size, salt, key);
  keep_key(line, {key, SQLCIPHER4_KEY_SIZE});
}

namespace engine::test {

void repeat_salts() noexcept { next_salt = 0; }
void derive_all_keys() noexcept { derives_all = true; }

void begin_test() noexcept {
  repeat_salts();
  derives_all = false;
}

}  // namespace engine::test
